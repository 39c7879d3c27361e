// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"
#include "settings/HotkeyHints.h"
#include "settings/SettingsCommand.h"

#include <QStringList>

class PluginManager;
class Settings;
class SettingsView;

/// The commands "set", "user" and "plugin": one row, and the settings page. Each command opens the
/// page at a different place.
class SettingsPlugin : public IPlugin
{
    Q_OBJECT

public:
    /// The services are for the page; they are not owned and must outlive the plugin.
    SettingsPlugin(Settings *settings, PluginManager *pluginManager, QObject *parent = nullptr);
    ~SettingsPlugin() override;

    /// Sets how the page learns that another program holds a hotkey. Call it before the page opens.
    void setHotkeyCheck(const HotkeyHints::Check &check) { m_hotkeyCheck = check; }

    /// Sets what the page says of wrong files of commands. Call it before the page opens.
    void setCommandErrors(const QStringList &lines) { m_commandErrors = lines; }

    /// Sets how the page learns where a hotkey comes from. Call it before the page opens.
    void setHotkeyOrigins(const HotkeyHints::Origins &origins) { m_hotkeyOrigins = origins; }

    /// Call this when an origin has changed by itself.
    void updateHotkeyHints();

    QString command() const override;
    QStringList aliases() const override;
    QString description() const override;

    /// One record without an action, for any arguments.
    QVariantList query(const QString &args) override;

    /// There are no actions; returns true.
    bool execute(const QVariantMap &action) override;

    bool hasView() const override;

    /// Also switches an existing page to the place of the command.
    void setViewCommand(const QString &command) override;

    /// A SettingsView, reloaded at each call and switched to the place of the last command.
    QWidget *createView() override;

private:
    Settings *m_settings;
    PluginManager *m_pluginManager;
    SettingsView *m_view = nullptr;
    HotkeyHints::Check m_hotkeyCheck;
    QStringList m_commandErrors;
    HotkeyHints::Origins m_hotkeyOrigins;
    QString m_viewCommand = settingscommand::set;
};
