// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

struct Task;
class TaskRepository;
class TaskStorage;

/// The rules of the task list. Each call writes its change to the disk before it returns. If that
/// fails, the change stays in memory until the next write. Invalid input is ignored. There are no
/// signals: views read the tasks again after each call. Nothing in the program calls the invokable
/// functions by name, nor updateNote() at all.
class TaskService : public QObject
{
    Q_OBJECT

public:
    /// Loads the task file from the application's data folder.
    explicit TaskService(QObject *parent = nullptr);
    ~TaskService() override;

    /// The tasks, for reading; owned by the service.
    TaskRepository *repository() const { return m_repository; }

    /// Adds a task with the trimmed title at any level; the parent's state stays the same. Returns
    /// the new id, or an empty string for a blank title or an unknown parent.
    Q_INVOKABLE QString createTask(const QString &title, const QString &parentId = QString());

    /// Like createTask(), but requires a parent above the fifth level, which is the deepest.
    Q_INVOKABLE QString createSubTask(const QString &parentId, const QString &title);

    /// Deletes the task and its descendants; the parent's state stays the same.
    Q_INVOKABLE void deleteTask(const QString &id);

    /// Adds deleted tasks again with all their fields; the parents' states stay the same.
    void restoreTasks(const QList<Task> &tasks);

    /// Sets the state of the task and its descendants. Then updates its ancestors, up to the first
    /// whose state stays the same: each is completed if all its children are, and otherwise active.
    Q_INVOKABLE void setCompleted(const QString &id, bool completed);

    /// Sets the trimmed title, unless it is blank or unchanged.
    Q_INVOKABLE void updateTitle(const QString &id, const QString &title);

    /// Sets the note, even if it is empty or unchanged.
    Q_INVOKABLE void updateNote(const QString &id, const QString &note);

    /// Saves the task file.
    Q_INVOKABLE void persist();

private:
    void applyCompleted(const QString &id, bool completed);
    void refreshParentCompleted(const QString &id);

    TaskRepository *m_repository;
    std::unique_ptr<TaskStorage> m_storage;
};
