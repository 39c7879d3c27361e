// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RowUpdate.h"

#include "core/PluginManager.h"
#include "core/RowsChanged.h"
#include "ui/CommandLineEdit.h"
#include "ui/CommandQuery.h"
#include "ui/ResultList.h"
#include "ui/WindowHeight.h"

RowUpdate::RowUpdate(PluginManager *pluginManager, const CommandQuery *lastQuery,
                     const CommandLineEdit *box, ResultList *list, WindowHeight *height)
    : QObject(height)
    , m_pluginManager(pluginManager)
    , m_lastQuery(lastQuery)
    , m_box(box)
    , m_list(list)
    , m_height(height)
{
    connect(pluginManager->rowsChanged(), &RowsChanged::changed, this, &RowUpdate::update);
}

void RowUpdate::update(const QString &command)
{
    // Compare plugins, since the box may hold an alias of the command.
    const IPlugin *plugin = m_pluginManager->pluginForCommand(command);
    if (!plugin || plugin != m_pluginManager->pluginForCommand(m_lastQuery->command())
        || m_lastQuery->text() != m_box->text()) {
        return;
    }
    m_list->updateRecords(m_lastQuery->records());
    m_height->scheduleUpdate();
}
