// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/SettingsPlugin.h"

#include "core/ResultRecord.h"
#include "settings/SettingsView.h"

SettingsPlugin::SettingsPlugin(Settings *settings, PluginManager *pluginManager, QObject *parent)
    : IPlugin(parent)
    , m_settings(settings)
    , m_pluginManager(pluginManager)
{
}

SettingsPlugin::~SettingsPlugin() = default;

void SettingsPlugin::updateHotkeyHints()
{
    if (m_view) {
        m_view->updateHotkeyHints();
    }
}

QString SettingsPlugin::command() const
{
    return settingscommand::set;
}

QStringList SettingsPlugin::aliases() const
{
    return {settingscommand::user, settingscommand::plugin};
}

QString SettingsPlugin::description() const
{
    return tr("Open Settings");
}

QVariantList SettingsPlugin::query(const QString &)
{
    return {makeRecord(tr("Settings"), tr("Modify global hotkey, window style and other settings"),
                       QString())};
}

bool SettingsPlugin::execute(const QVariantMap &)
{
    return true;
}

bool SettingsPlugin::hasView() const
{
    return true;
}

void SettingsPlugin::setViewCommand(const QString &command)
{
    m_viewCommand = command;
    if (m_view) {
        m_view->showPage(command);
    }
}

QWidget *SettingsPlugin::createView()
{
    if (!m_view) {
        m_view = new SettingsView(m_settings, m_pluginManager);
        m_view->setHotkeyCheck(m_hotkeyCheck);
        if (!m_commandErrors.isEmpty()) {
            m_view->addCommandErrors(m_commandErrors);
        }
        m_view->setHotkeyOrigins(m_hotkeyOrigins);
        connect(m_view, &SettingsView::closeRequested, this, &SettingsPlugin::viewCloseRequested);
        connect(m_view, &QObject::destroyed, this, [this] { m_view = nullptr; });
    }
    m_view->reload();
    m_view->showPage(m_viewCommand);
    return m_view;
}
