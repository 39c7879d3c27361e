// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/DeletedTasks.h"

#include "tasks/TaskRepository.h"
#include "tasks/TaskService.h"

DeletedTasks::DeletedTasks(TaskService *service)
    : m_service(service)
{
}

void DeletedTasks::deleteTask(const QString &id)
{
    const TaskRepository *repository = m_service->repository();
    if (!repository->contains(id)) {
        return;
    }
    QList<Task> tasks{repository->task(id)};
    const QStringList below = repository->descendants(id);
    for (const QString &descendant : below) {
        tasks.append(repository->task(descendant));
    }
    m_deletions.append(tasks);
    m_service->deleteTask(id);
}

QString DeletedTasks::restoreLast()
{
    if (m_deletions.isEmpty()) {
        return {};
    }
    const QList<Task> tasks = m_deletions.takeLast();
    m_service->restoreTasks(tasks);
    return tasks.first().id;
}
