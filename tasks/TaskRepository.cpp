// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskRepository.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

namespace {

bool isOlder(const Task &a, const Task &b)
{
    if (a.createdTime != b.createdTime) {
        return a.createdTime < b.createdTime;
    }
    return a.id < b.id;
}

void sortSiblings(QList<Task> &siblings)
{
    std::stable_sort(siblings.begin(), siblings.end(), isOlder);
}

} // namespace

TaskRepository::TaskRepository(QObject *parent)
    : QObject(parent)
{
}

TaskRepository::~TaskRepository() = default;

void TaskRepository::addTask(const Task &task)
{
    m_tasks.insert(task.id, task);
    Q_EMIT taskAdded(task.id);
}

void TaskRepository::removeTask(const QString &id)
{
    if (!m_tasks.contains(id)) {
        return;
    }
    const QStringList below = descendants(id);
    for (const QString &descendant : below) {
        m_tasks.remove(descendant);
    }
    m_tasks.remove(id);
    Q_EMIT taskRemoved(id);
}

void TaskRepository::updateTask(const Task &task)
{
    const auto stored = m_tasks.find(task.id);
    if (stored == m_tasks.end()) {
        return;
    }
    *stored = task;
    Q_EMIT taskUpdated(task.id);
}

bool TaskRepository::contains(const QString &id) const
{
    return m_tasks.contains(id);
}

Task TaskRepository::task(const QString &id) const
{
    return m_tasks.value(id);
}

QList<Task> TaskRepository::children(const QString &parentId) const
{
    QList<Task> siblings;
    for (const Task &task : m_tasks) {
        if (task.parentId == parentId) {
            siblings.append(task);
        }
    }
    sortSiblings(siblings);
    return siblings;
}

QHash<QString, QList<Task>> TaskRepository::childrenByParent() const
{
    QHash<QString, QList<Task>> groups;
    for (const Task &task : m_tasks) {
        groups[task.parentId].append(task);
    }
    for (QList<Task> &siblings : groups) {
        sortSiblings(siblings);
    }
    return groups;
}

QStringList TaskRepository::descendants(const QString &id) const
{
    const QHash<QString, QList<Task>> groups = childrenByParent();
    QStringList found;
    // What was seen is skipped, as a file edited by hand may hold a circle of parents; the list of
    // what is left to do stands for a recursion, which a long chain would take too deep.
    QSet<QString> seen{id};
    QStringList pending{id};
    while (!pending.isEmpty()) {
        const QString parentId = pending.takeLast();
        if (parentId != id) {
            found.append(parentId);
        }
        const QList<Task> siblings = groups.value(parentId);
        for (auto task = siblings.crbegin(); task != siblings.crend(); ++task) {
            if (!seen.contains(task->id)) {
                seen.insert(task->id);
                pending.append(task->id);
            }
        }
    }
    return found;
}

QList<Task> TaskRepository::allTasks() const
{
    return m_tasks.values();
}

int TaskRepository::depth(const QString &id) const
{
    QSet<QString> path;
    for (QString current = id; !current.isEmpty() && !path.contains(current);
         current = task(current).parentId) {
        path.insert(current);
    }
    return int(path.size());
}

void TaskRepository::fromJson(const QJsonArray &array)
{
    m_tasks.clear();
    for (const QJsonValue &element : array) {
        const Task task = Task::fromJson(element.toObject());
        if (!task.id.isEmpty()) {
            m_tasks.insert(task.id, task);
        }
    }
}

QJsonArray TaskRepository::toJson() const
{
    QJsonArray array;
    for (const Task &task : m_tasks) {
        array.append(task.toJson());
    }
    return array;
}
