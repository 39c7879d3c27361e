// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tasks/Task.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

class QJsonArray;

/// The tasks of a repository by parentId, siblings in order.
using TaskGroups = QHash<QString, QList<const Task *>>;

/// All tasks of the user in a flat table by id. The tree follows from each task's parentId. Only
/// TaskService writes. Tasks whose parents form a cycle or do not exist are kept, but no top-level
/// task leads to them. Nothing in the program connects the signals.
class TaskRepository : public QObject
{
    Q_OBJECT

public:
    explicit TaskRepository(QObject *parent = nullptr);
    ~TaskRepository() override;

    /// Stores the task under its id and replaces an existing one.
    void addTask(const Task &task);

    /// Removes the task and its descendants with a single signal. Does nothing for an unknown id.
    void removeTask(const QString &id);

    /// Replaces the task with this id. Does nothing for an unknown id.
    void updateTask(const Task &task);

    bool contains(const QString &id) const;

    /// The task, or one with an empty id if there is none.
    Task task(const QString &id) const;

    /// The direct children, or the top-level tasks for an empty id. Sorted by creation time, then
    /// by id.
    QList<Task> children(const QString &parentId) const;

    /// children() for every parentId, for walks over the whole tree. Valid until the next change.
    TaskGroups childrenByParent() const;

    /// The ids of all descendants without duplicates: parents before their children, siblings in
    /// the order of children().
    QStringList descendants(const QString &id) const;

    /// All tasks, in no particular order.
    QList<Task> allTasks() const;

    /// The level in the tree: 1 for a top-level task or an unknown id, 0 for an empty id. Each task
    /// of a cycle counts once.
    int depth(const QString &id) const;

    /// Replaces the table without a signal. Drops elements without an id; the last of several with
    /// the same id wins.
    void fromJson(const QJsonArray &array);

    /// All tasks in the format of the task file, in no particular order.
    QJsonArray toJson() const;

Q_SIGNALS:
    void taskAdded(const QString &id);
    /// Not emitted for the descendants, which are removed too.
    void taskRemoved(const QString &id);
    void taskUpdated(const QString &id);
    /// Never emitted: tasks cannot be moved.
    void taskMoved(const QString &id);

private:
    QHash<QString, Task> m_tasks;
};
