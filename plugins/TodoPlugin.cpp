// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/TodoPlugin.h"

#include "core/ResultRecord.h"
#include "tasks/TaskService.h"
#include "tasks/TodoView.h"

using namespace Qt::StringLiterals;

TodoPlugin::TodoPlugin(QObject *parent)
    : IPlugin(parent)
    , m_service(new TaskService(this))
{
}

TodoPlugin::~TodoPlugin() = default;

QString TodoPlugin::command() const
{
    return u"todo"_s;
}

QString TodoPlugin::description() const
{
    return tr("Task Management");
}

QVariantList TodoPlugin::query(const QString &)
{
    return {makeRecord(tr("Task Management"), tr("Manage TODO list and subtasks"), QString())};
}

bool TodoPlugin::execute(const QVariantMap &)
{
    return true;
}

bool TodoPlugin::hasView() const
{
    return true;
}

QWidget *TodoPlugin::createView()
{
    if (!m_view) {
        m_view = new TodoView(m_service);
        connect(m_view, &TodoView::closeRequested, this, &TodoPlugin::viewCloseRequested);
        connect(m_view, &QObject::destroyed, this, [this] { m_view = nullptr; });
    }
    m_view->activate();
    return m_view;
}
