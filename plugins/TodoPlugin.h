// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

class TaskService;
class TodoView;

/// The command "todo": one row that leads to the page of the task list. It owns the tasks, which
/// are read when the plugin is made.
class TodoPlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit TodoPlugin(QObject *parent = nullptr);
    ~TodoPlugin() override;

    QString command() const override;
    QString description() const override;

    /// One record without an action, whatever the arguments.
    QVariantList query(const QString &args) override;

    /// Nothing to carry out; true.
    bool execute(const QVariantMap &action) override;

    bool hasView() const override;

    /// A TodoView, brought up to date at each call.
    QWidget *createView() override;

private:
    TaskService *m_service;
    TodoView *m_view = nullptr;
};
