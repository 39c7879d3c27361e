// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/PluginManager.h"

#include "core/IPlugin.h"
#include "settings/Settings.h"

#include <QClipboard>
#include <QDebug>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QProcess>
#include <QUrl>

using namespace Qt::StringLiterals;

PluginManager::PluginManager(QObject *parent)
    : QObject(parent)
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

    const QStringList words = QStringList(plugin->command()) + plugin->aliases();
    for (const QString &word : words) {
        const QString key = word.toLower().trimmed();
        if (key.isEmpty()) {
            continue;
        }
        if (m_plugins.contains(key)) {
            qWarning() << "Plugin command conflict:" << key;
            continue;
        }
        m_plugins.insert(key, plugin);
        qDebug() << "Plugin registered:" << key << "-" << plugin->description();
    }
}

IPlugin *PluginManager::pluginForCommand(const QString &cmd) const
{
    return m_plugins.value(cmd.toLower());
}

QWidget *PluginManager::viewForCommand(const QString &cmd)
{
    const QString key = cmd.toLower();
    IPlugin *plugin = m_plugins.value(key);
    if (!plugin) {
        return nullptr;
    }
    plugin->setViewCommand(key);
    return plugin->createView();
}

QVariantList PluginManager::queryCommand(const QString &cmd, const QString &args)
{
    const QString key = cmd.toLower().trimmed();
    IPlugin *plugin = m_plugins.value(key);
    if (!plugin) {
        qDebug() << "Unknown command:" << cmd;
        return {};
    }

    // The switch belongs to the typed word, so an alias stays on when its plugin is off.
    if (m_settings && !m_settings->isPluginEnabled(key)) {
        return {QVariantMap{
            {u"title"_s, tr("Plugin disabled")},
            {u"subtitle"_s, key + tr(" plugin has been disabled in settings")},
            {u"icon"_s, QString()},
            {u"action"_s, QVariantMap{{u"type"_s, u"none"_s}, {u"plugin"_s, key}}},
        }};
    }
    return plugin->query(args);
}

bool PluginManager::executeAction(const QVariantMap &action)
{
    const QString type = action.value(u"type"_s).toString();
    if (type.isEmpty()) {
        return false;
    }

    if (IPlugin *plugin = m_plugins.value(action.value(u"plugin"_s).toString().toLower())) {
        return plugin->execute(action);
    }

    const QString data = action.value(u"data"_s).toString();
    if (data.isEmpty()) {
        return false;
    }
    if (type == "launch"_L1) {
        return QProcess::startDetached(data, {}, QString(), nullptr);
    }
    if (type == "openUrl"_L1) {
        return QDesktopServices::openUrl(QUrl(data));
    }
    if (type == "copy"_L1) {
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
    return plugin && plugin->hasView() && m_settings && m_settings->isPluginEnabled(cmd.toLower())
           && m_settings->pluginAutoEnter();
}
