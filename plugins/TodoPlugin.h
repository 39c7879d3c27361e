// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ArgumentsAction.h"
#include "core/IPlugin.h"

class TaskService;
class TodoView;

/// The command "todo": one row, and the page of the task list. Its arguments are the title of a
/// task, which can be added without the page. Owns the tasks, and loads them in the constructor.
class TodoPlugin : public IPlugin, public ArgumentsAction
{
    Q_OBJECT

public:
    explicit TodoPlugin(QObject *parent = nullptr);
    ~TodoPlugin() override;

    QString command() const override;
    QString description() const override;

    /// One record without an action, for any arguments.
    QVariantList query(const QString &args) override;

    /// Adds the task of an action of the type "addTask"; returns false for a blank title. Shows the
    /// task on the page if that is open. Does nothing and returns true for any other action.
    bool execute(const QVariantMap &action) override;

    /// An action that adds a task with the trimmed text as its title; empty for a blank text.
    QVariantMap actionForArguments(const QString &args) const override;

    bool hasView() const override;

    /// A TodoView, updated at each call.
    QWidget *createView() override;

private:
    TaskService *m_service;
    TodoView *m_view = nullptr;
};
