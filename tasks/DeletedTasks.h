// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tasks/Task.h"

#include <QList>
#include <QString>

class TaskService;

/// Deletes tasks and restores them in reverse order. Keeps them in memory only.
class DeletedTasks
{
public:
    /// The service is not owned and must outlive the object.
    explicit DeletedTasks(TaskService *service);

    bool isEmpty() const { return m_deletions.isEmpty(); }

    /// Deletes the task and its descendants. Does nothing for an unknown id.
    void deleteTask(const QString &id);

    /// Restores the tasks of the last deletion that is not yet restored, with all their fields.
    /// Returns the id of the topmost one, or an empty string if there is none.
    QString restoreLast();

private:
    TaskService *m_service;
    QList<QList<Task>> m_deletions; // each with the topmost task first
};
