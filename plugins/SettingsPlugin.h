// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/IPlugin.h"

class PluginManager;
class Settings;
class SettingsView;

/// The commands "set", "user" and "plugin": one row, and the page of the preferences, which each of
/// the three words opens at another place.
class SettingsPlugin : public IPlugin
{
    Q_OBJECT

public:
    /// Both services are handed on to the page; neither is owned.
    SettingsPlugin(Settings *settings, PluginManager *pluginManager, QObject *parent = nullptr);
    ~SettingsPlugin() override;

    QString command() const override;
    QStringList aliases() const override;
    QString description() const override;

    /// One record without an action, whatever the arguments.
    QVariantList query(const QString &args) override;

    /// Nothing to carry out; true.
    bool execute(const QVariantMap &action) override;

    bool hasView() const override;

    /// Turns a page that exists to the word's place at once.
    void setViewCommand(const QString &command) override;

    /// A SettingsView, at each call filled anew and turned to the place of the last word.
    QWidget *createView() override;

private:
    Settings *m_settings;
    PluginManager *m_pluginManager;
    SettingsView *m_view = nullptr;
    QString m_viewCommand = QStringLiteral("set");
};
