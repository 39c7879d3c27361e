// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

class TaskService;
class TodoView;

/// The command "todo": one row, and the page of the task list. Owns the tasks, and loads them in
/// the constructor.
class TodoPlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit TodoPlugin(QObject *parent = nullptr);
    ~TodoPlugin() override;

    QString command() const override;
    QString description() const override;

    /// One record without an action, for any arguments.
    QVariantList query(const QString &args) override;

    /// There are no actions; returns true.
    bool execute(const QVariantMap &action) override;

    bool hasView() const override;

    /// A TodoView, updated at each call.
    QWidget *createView() override;

private:
    TaskService *m_service;
    TodoView *m_view = nullptr;
};
