// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CommandQuery.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "settings/SearchEngine.h"
#include "settings/Settings.h"

using namespace Qt::StringLiterals;

CommandQuery::CommandQuery(PluginManager *pluginManager, AppLauncher *launcher, Settings *settings)
    : m_pluginManager(pluginManager)
    , m_launcher(launcher)
    , m_settings(settings)
{
}

void CommandQuery::setText(const CommandText &text)
{
    m_text = text;
    m_hasBlank = text.arguments && !text.command.isEmpty();
    m_command = (m_hasBlank ? text.command : text.joined()).trimmed();
    const IPlugin *plugin = m_pluginManager->pluginForCommand(m_command);
    // The lookup ignores the case, but without a blank only the lower-case command counts.
    m_isCommand = m_hasBlank || (plugin && m_command == m_command.toLower());
    if (!m_isCommand) {
        m_command.clear();
    }
    m_plugin = m_isCommand ? plugin : nullptr;
}

QString CommandQuery::arguments() const
{
    return m_hasBlank ? *m_text.arguments : QString();
}

bool CommandQuery::opensAtOnce() const
{
    return m_hasBlank && arguments().trimmed().isEmpty()
           && m_pluginManager->autoEnterForCommand(m_command);
}

QVariantList CommandQuery::records() const
{
    const QString text = m_text.joined();
    const QString trimmed = text.trimmed();
    QVariantList records;
    if (m_isCommand) {
        records = m_pluginManager->queryCommand(m_command, arguments());
    } else if (!trimmed.isEmpty() || m_settings->showAllAppsWhenSearchEmpty()) {
        records = m_launcher->search(text);
    }
    if (records.isEmpty() && !trimmed.isEmpty()) {
        records.append(webSearchRecord(trimmed));
    }
    return records;
}

QStringList CommandQuery::searchTexts() const
{
    if (!m_isCommand) {
        return {m_text.joined()};
    }
    return m_plugin ? m_plugin->searchTexts(arguments()) : QStringList();
}

QVariantMap CommandQuery::webSearchRecord(const QString &text) const
{
    const QString engine = m_settings->searchEngine();
    QVariantMap record =
        makeRecord(tr("Search \"%1\"").arg(text), tr("Search with %1").arg(engine));
    setRecordAction(record, makeAction(actiontype::openUrl, webSearchUrl(engine, text)));
    return record;
}

QString CommandQuery::statusText() const
{
    if (!m_isCommand) {
        return {};
    }
    const QString description = m_plugin ? m_plugin->description() : QString();
    return description.isEmpty() ? tr("%1 | Unknown command").arg(m_command)
                                 : tr("%1 | %2").arg(m_command, description);
}
