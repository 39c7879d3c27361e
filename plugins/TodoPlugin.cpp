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

bool TodoPlugin::execute(const QVariantMap &action)
{
    if (actionType(action) != actiontype::addTask) {
        return true;
    }
    const QString id = m_service->createTask(actionData(action));
    // A hidden page is updated when it opens.
    if (!id.isEmpty() && m_view && m_view->isVisible()) {
        m_view->showTask(id);
    }
    return !id.isEmpty();
}

QVariantMap TodoPlugin::actionForArguments(const QString &args) const
{
    const QString title = args.trimmed();
    return title.isEmpty() ? QVariantMap() : makeAction(actiontype::addTask, title, command());
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
