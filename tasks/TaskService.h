// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <memory>

class TaskRepository;
class TaskStorage;

/// The rules of the task list. Each change is on disk when its call returns; a write that fails
/// leaves the change in memory, and the next change writes again. Bad input is refused in silence.
/// There are no signals: whoever shows the tasks reads them anew after each call.
class TaskService : public QObject
{
    Q_OBJECT

public:
    /// Reads the task file in the application's data folder.
    explicit TaskService(QObject *parent = nullptr);
    ~TaskService() override;

    /// The tasks, for reading; owned by the service.
    TaskRepository *repository() const { return m_repository; }

    /// Adds a task with the trimmed title at any level; the parent keeps its state. Returns the new
    /// id, or an empty string for a blank title or an unknown parent.
    Q_INVOKABLE QString createTask(const QString &title, const QString &parentId = QString());

    /// As createTask(), but a parent is required and must stand above the deepest level, the fifth.
    Q_INVOKABLE QString createSubTask(const QString &parentId, const QString &title);

    /// Deletes the task with everything below it; the parent keeps its state.
    Q_INVOKABLE void deleteTask(const QString &id);

    /// Sets the state of the task and of everything below it; upwards, each parent becomes
    /// completed exactly when all its children are.
    Q_INVOKABLE void setCompleted(const QString &id, bool completed);

    /// Sets the trimmed title, unless it is blank or the same.
    Q_INVOKABLE void updateTitle(const QString &id, const QString &title);

    /// Sets the note as it is, also when it is empty or the same.
    Q_INVOKABLE void updateNote(const QString &id, const QString &note);

    /// Writes the file once more.
    Q_INVOKABLE void persist();

private:
    void applyCompleted(const QString &id, bool completed);
    void refreshParentCompleted(const QString &id);

    TaskRepository *m_repository;
    std::unique_ptr<TaskStorage> m_storage;
};
