// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskRepository.h"

#include "fuzz/Fuzz.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

using namespace Qt::StringLiterals;

// The input is the text of a task file.

namespace {

using fuzz::check;

constexpr qsizetype maximumTasks = 50; // the checks take a time that grows with the square

QHash<QString, QJsonObject> byId(const TaskRepository &repository)
{
    QHash<QString, QJsonObject> objects;
    const QJsonArray array = repository.toJson();
    for (const QJsonValueConstRef value : array) {
        objects.insert(value.toObject()["id"_L1].toString(), value.toObject());
    }
    return objects;
}

void checkTimes(const Task &task)
{
    const QJsonObject object = task.toJson();
    check(object["createdTime"_L1].toString() == task.createdTime.toString(Qt::ISODate),
          "a time is not written as Qt::ISODate");
    check(object["dueTime"_L1].toString() == task.dueTime.toString(Qt::ISODate),
          "a time is not written as Qt::ISODate");
}

void checkReload(const TaskRepository &repository)
{
    TaskRepository again;
    again.fromJson(repository.toJson());
    TaskRepository third;
    third.fromJson(again.toJson());
    check(again.allTasks().size() == repository.allTasks().size(), "a task is lost in the file");
    check(byId(third) == byId(again), "the tasks change when they are saved and loaded");
}

void checkTree(const TaskRepository &repository)
{
    const QList<Task> tasks = repository.allTasks();
    qsizetype children = 0;
    const TaskGroups groups = repository.childrenByParent();
    for (const auto &group : groups) {
        children += group.size();
    }
    check(children == tasks.size(), "a task is in no group of siblings, or in two");
    for (const Task &task : tasks) {
        check(!task.id.isEmpty(), "a task without an id");
        checkTimes(task);
        const QStringList below = repository.descendants(task.id);
        check(QSet<QString>(below.begin(), below.end()).size() == below.size(),
              "a task is twice below another");
        // A parent that does not exist counts, too.
        const int depth = repository.depth(task.id);
        check(depth >= 1 && depth <= tasks.size() + 1, "a level out of range");
    }
}

void checkRemoval(TaskRepository &repository)
{
    const QList<Task> tasks = repository.allTasks();
    for (const Task &task : tasks) {
        if (!repository.contains(task.id)) {
            continue;
        }
        const QStringList below = repository.descendants(task.id);
        const QSet<QString> gone = QSet<QString>(below.begin(), below.end()) + QSet{task.id};
        const qsizetype before = repository.allTasks().size();
        repository.removeTask(task.id);
        check(repository.allTasks().size() == before - gone.size(),
              "a removal takes other tasks along, or leaves some");
    }
    check(repository.allTasks().isEmpty(), "a task that cannot be removed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QJsonDocument document = QJsonDocument::fromJson(fuzz::bytesOf(data, size));
    if (document.array().size() > maximumTasks) {
        return -1;
    }
    TaskRepository repository;
    repository.fromJson(document.array());
    checkReload(repository);
    checkTree(repository);
    checkRemoval(repository);
    return 0;
}
