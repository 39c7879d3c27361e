// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

class IPlugin;
class QWidget;
class RowsChanged;
class Settings;

/// Maps commands to plugins; the window reaches the plugins through it. Commands are looked up in
/// lower case; registerPlugin() and queryCommand() also trim them. Nothing in the program calls the
/// invokable functions by name.
class PluginManager : public QObject
{
    Q_OBJECT

public:
    explicit PluginManager(QObject *parent = nullptr);
    ~PluginManager() override;

    /// Sets where to read which plugins are enabled and whether commands auto-enter; not owned.
    /// Without settings, every plugin is enabled and no command auto-enters.
    void setSettings(Settings *settings);

    /// Registers the plugin for its command and its aliases. A command that is taken keeps its
    /// first plugin, and a warning is logged. The plugin is not owned; null is ignored.
    void registerPlugin(IPlugin *plugin);

    /// The plugin of a command; null for an unknown one.
    IPlugin *pluginForCommand(const QString &cmd) const;

    /// For plugins whose rows come later, and for the window, which then repeats its query; never
    /// null.
    RowsChanged *rowsChanged() const { return m_rowsChanged.get(); }

    /// The plugins that the user can disable and give a hotkey: all but that of "set", each once,
    /// in the alphabetical order of their commands.
    QList<IPlugin *> configurablePlugins() const;

    /// Calls IPlugin::setViewCommand() and returns the page of the plugin, even if the plugin is
    /// disabled. Null for an unknown command and for a plugin without a page.
    QWidget *viewForCommand(const QString &cmd);

    /// Returns what executeAction() needs for the arguments of a plugin that is an ArgumentsAction.
    /// Empty for any other plugin, for a disabled and for an unknown command.
    QVariantMap actionForArguments(const QString &cmd, const QString &args) const;

    /// Returns the records of the plugin for the arguments, passed on unchanged. If the command is
    /// disabled, returns one record that says so. Empty for an unknown command.
    Q_INVOKABLE QVariantList queryCommand(const QString &cmd, const QString &args);

    /// Passes the action to the plugin that it names. If it names no known plugin, carries out
    /// "launch", "openUrl" and "copy" itself. Returns false if nothing was done.
    Q_INVOKABLE bool executeAction(const QVariantMap &action);

    /// All commands and aliases, in no particular order.
    Q_INVOKABLE QStringList commands() const;

    /// The description of the plugin; empty for an unknown command.
    Q_INVOKABLE QString commandDescription(const QString &cmd) const;

    /// Whether the command opens its page without Enter when it has no arguments.
    Q_INVOKABLE bool autoEnterForCommand(const QString &cmd) const;

private:
    // An alias has its own setting, so it stays enabled when the command of its plugin is disabled.
    bool isEnabled(const QString &command) const;

    QHash<QString, IPlugin *> m_plugins;
    Settings *m_settings = nullptr;
    const std::unique_ptr<RowsChanged> m_rowsChanged;
};
