// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tasks/Task.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

class QJsonArray;

/// Tasks of a repository by their parentId, siblings in their order.
using TaskGroups = QHash<QString, QList<const Task *>>;

/// All tasks of the user, as a flat table by id. The tree exists only in the parentId of each task
/// and is derived on demand; TaskService is the only writer. Tasks whose chain of parents runs in a
/// circle, or ends at a task that is not there, are kept but are reached from no top-level task.
class TaskRepository : public QObject
{
    Q_OBJECT

public:
    explicit TaskRepository(QObject *parent = nullptr);
    ~TaskRepository() override;

    /// Stores the task under its id, in place of any other with that id.
    void addTask(const Task &task);

    /// Removes the task with everything below it, and emits one signal; nothing for an unknown id.
    void removeTask(const QString &id);

    /// Replaces the whole record; nothing for an unknown id.
    void updateTask(const Task &task);

    bool contains(const QString &id) const;

    /// The task, or one with an empty id if there is none.
    Task task(const QString &id) const;

    /// The direct children, oldest first, those of the same moment by id; the top-level tasks for
    /// an empty id.
    QList<Task> children(const QString &parentId) const;

    /// What children() gives for every parentId in the table, for walks over the whole tree. Good
    /// until the next change.
    TaskGroups childrenByParent() const;

    /// The ids of everything below the task, each once: parents before their children, siblings in
    /// the order of children().
    QStringList descendants(const QString &id) const;

    /// All tasks, in no particular order.
    QList<Task> allTasks() const;

    /// The level in the tree: 1 for a top-level task or an unknown id, 0 for an empty id. A circle
    /// is counted once round.
    int depth(const QString &id) const;

    /// Replaces the table, without a signal. Elements without an id are dropped; of two with the
    /// same id the later one stays.
    void fromJson(const QJsonArray &array);

    /// All tasks in the form of the task file, in no particular order.
    QJsonArray toJson() const;

Q_SIGNALS:
    void taskAdded(const QString &id);
    /// Those below the task go with it without a signal of their own.
    void taskRemoved(const QString &id);
    void taskUpdated(const QString &id);
    /// Never emitted: a task keeps its place.
    void taskMoved(const QString &id);

private:
    QHash<QString, Task> m_tasks;
};
