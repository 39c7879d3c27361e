// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/PluginManager.h"

#include "core/ArgumentsAction.h"
#include "core/IPlugin.h"
#include "core/ResultRecord.h"
#include "core/RowsChanged.h"
#include "platform/BuiltinPrograms.h"
#include "settings/Settings.h"
#include "settings/SettingsCommand.h"

#include <QClipboard>
#include <QDebug>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QProcess>
#include <QUrl>

#include <utility>

PluginManager::PluginManager(QObject *parent)
    : QObject(parent)
    , m_rowsChanged(std::make_unique<RowsChanged>())
{
}

PluginManager::~PluginManager() = default;

void PluginManager::setSettings(Settings *settings)
{
    m_settings = settings;
}

void PluginManager::registerPlugin(IPlugin *plugin)
{
    if (!plugin) {
        return;
    }

    const QStringList commands = QStringList(plugin->command()) + plugin->aliases();
    for (const QString &cmd : commands) {
        const QString command = cmd.toLower().trimmed();
        if (command.isEmpty()) {
            continue;
        }
        if (m_plugins.contains(command)) {
            qWarning() << "Plugin command conflict:" << command;
            continue;
        }
        m_plugins.insert(command, plugin);
        qDebug() << "Plugin registered:" << command << "-" << plugin->description();
    }
}

IPlugin *PluginManager::pluginForCommand(const QString &cmd) const
{
    return m_plugins.value(cmd.toLower());
}

QList<IPlugin *> PluginManager::configurablePlugins() const
{
    QStringList sortedCommands = commands();
    sortedCommands.sort(Qt::CaseInsensitive);
    QList<IPlugin *> plugins;
    // The user must not disable the settings page.
    const IPlugin *settingsPlugin = pluginForCommand(settingscommand::set);
    for (const QString &command : std::as_const(sortedCommands)) {
        IPlugin *plugin = pluginForCommand(command);
        if (plugin && plugin != settingsPlugin && !plugins.contains(plugin)) {
            plugins.append(plugin);
        }
    }
    return plugins;
}

QWidget *PluginManager::viewForCommand(const QString &cmd)
{
    const QString command = cmd.toLower();
    IPlugin *plugin = m_plugins.value(command);
    if (!plugin) {
        return nullptr;
    }
    plugin->setViewCommand(command);
    return plugin->createView();
}

QVariantMap PluginManager::actionForArguments(const QString &cmd, const QString &args) const
{
    const QString command = cmd.toLower();
    const auto *plugin = dynamic_cast<const ArgumentsAction *>(m_plugins.value(command));
    return plugin && isEnabled(command) ? plugin->actionForArguments(args) : QVariantMap();
}

QVariantList PluginManager::queryCommand(const QString &cmd, const QString &args)
{
    const QString command = cmd.toLower().trimmed();
    IPlugin *plugin = m_plugins.value(command);
    if (!plugin) {
        qDebug() << "Unknown command:" << cmd;
        return {};
    }

    if (!isEnabled(command)) {
        return {makeInertRecord(tr("Plugin disabled"),
                                command + tr(" plugin has been disabled in settings"), command)};
    }
    return plugin->query(args);
}

bool PluginManager::executeAction(const QVariantMap &action)
{
    const QString type = actionType(action);
    if (type.isEmpty()) {
        return false;
    }

    if (IPlugin *plugin = m_plugins.value(actionCommand(action).toLower())) {
        return plugin->execute(action);
    }

    const QString data = actionData(action);
    if (data.isEmpty()) {
        return false;
    }
    if (type == actiontype::launch) {
        return QProcess::startDetached(platform::programFile(data), {}, QString(), nullptr);
    }
    if (type == actiontype::openUrl) {
        return QDesktopServices::openUrl(QUrl(data));
    }
    if (type == actiontype::copy) {
        QGuiApplication::clipboard()->setText(data);
        return true;
    }
    return false;
}

QStringList PluginManager::commands() const
{
    return m_plugins.keys();
}

QString PluginManager::commandDescription(const QString &cmd) const
{
    const IPlugin *plugin = pluginForCommand(cmd);
    return plugin ? plugin->description() : QString();
}

bool PluginManager::autoEnterForCommand(const QString &cmd) const
{
    const IPlugin *plugin = pluginForCommand(cmd);
    return plugin && plugin->hasView() && m_settings && m_settings->pluginAutoEnter()
           && isEnabled(cmd.toLower());
}

bool PluginManager::isEnabled(const QString &command) const
{
    return !m_settings || m_settings->isPluginEnabled(command);
}
