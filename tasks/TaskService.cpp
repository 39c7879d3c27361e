// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskService.h"

#include "tasks/Task.h"
#include "tasks/TaskRepository.h"
#include "tasks/TaskStorage.h"

#include <QDateTime>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int deepestLevel = 5;

QString taskFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/todo.json"_s;
}

/// The current local time, computed at most once a millisecond: each conversion makes the C library
/// check the time zone's file.
class Clock
{
public:
    QDateTime now()
    {
        const qint64 moment = QDateTime::currentMSecsSinceEpoch();
        if (!m_time.isValid() || moment != m_moment) {
            m_moment = moment;
            m_time = QDateTime::fromMSecsSinceEpoch(moment);
        }
        return m_time;
    }

private:
    qint64 m_moment = 0;
    QDateTime m_time;
};

} // namespace

TaskService::TaskService(QObject *parent)
    : QObject(parent)
    , m_repository(new TaskRepository(this))
    , m_storage(std::make_unique<TaskStorage>(taskFilePath()))
{
    m_storage->load(m_repository);
}

TaskService::~TaskService() = default;

QString TaskService::createTask(const QString &title, const QString &parentId)
{
    const QString trimmed = title.trimmed();
    if (trimmed.isEmpty()) {
        return {};
    }
    if (!parentId.isEmpty() && !m_repository->contains(parentId)) {
        return {};
    }

    Task task;
    task.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    task.parentId = parentId;
    task.title = trimmed;
    task.createdTime = QDateTime::currentDateTime();
    task.updatedTime = task.createdTime;
    m_repository->addTask(task);
    persist();
    return task.id;
}

QString TaskService::createSubTask(const QString &parentId, const QString &title)
{
    if (!m_repository->contains(parentId) || m_repository->depth(parentId) >= deepestLevel) {
        return {};
    }
    return createTask(title, parentId);
}

void TaskService::deleteTask(const QString &id)
{
    m_repository->removeTask(id);
    persist();
}

void TaskService::restoreTasks(const QList<Task> &tasks)
{
    for (const Task &task : tasks) {
        m_repository->addTask(task);
    }
    persist();
}

void TaskService::setCompleted(const QString &id, bool completed)
{
    applyCompleted(id, completed);
    refreshParentCompleted(m_repository->task(id).parentId);
    persist();
}

void TaskService::updateTitle(const QString &id, const QString &title)
{
    const QString trimmed = title.trimmed();
    Task task = m_repository->task(id);
    if (trimmed.isEmpty() || task.id.isEmpty() || trimmed == task.title) {
        return;
    }
    task.title = trimmed;
    task.updatedTime = QDateTime::currentDateTime();
    m_repository->updateTask(task);
    persist();
}

void TaskService::updateNote(const QString &id, const QString &note)
{
    Task task = m_repository->task(id);
    if (task.id.isEmpty()) {
        return;
    }
    task.note = note;
    task.updatedTime = QDateTime::currentDateTime();
    m_repository->updateTask(task);
    persist();
}

void TaskService::persist()
{
    m_storage->save(m_repository);
}

void TaskService::applyCompleted(const QString &id, bool completed)
{
    if (!m_repository->contains(id)) {
        return;
    }
    Clock clock;
    const QStringList ids = QStringList(id) + m_repository->descendants(id);
    for (const QString &each : ids) {
        Task task = m_repository->task(each);
        task.completed = completed;
        task.updatedTime = clock.now();
        m_repository->updateTask(task);
    }
}

void TaskService::refreshParentCompleted(const QString &id)
{
    // Ends on cyclic parents: once a task reopens, no ancestor becomes completed again.
    Task parent = m_repository->task(id);
    while (!parent.id.isEmpty()) {
        const QList<Task> children = m_repository->children(parent.id);
        const bool allCompleted = std::all_of(children.cbegin(), children.cend(),
                                              [](const Task &child) { return child.completed; });
        if (children.isEmpty() || parent.completed == allCompleted) {
            return;
        }
        parent.completed = allCompleted;
        parent.updatedTime = QDateTime::currentDateTime();
        m_repository->updateTask(parent);
        parent = m_repository->task(parent.parentId);
    }
}
