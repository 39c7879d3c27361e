// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

class IPlugin;
class QWidget;
class Settings;

/// The table of command words, and the one way from the window to the plugins. A word is looked up
/// in lower case; only registerPlugin() and queryCommand() also trim it. Nothing in the program
/// calls the invokable functions by name.
class PluginManager : public QObject
{
    Q_OBJECT

public:
    explicit PluginManager(QObject *parent = nullptr);
    ~PluginManager() override;

    /// Where the plugin switches and the auto-enter preference are read; not owned. Without it
    /// every plugin is enabled and none auto-enters.
    void setSettings(Settings *settings);

    /// Enters the plugin under its command and its aliases. A word that is already taken keeps its
    /// first plugin, and a warning is logged. The plugin is not owned; null is ignored.
    void registerPlugin(IPlugin *plugin);

    /// The plugin of a word, or null.
    IPlugin *pluginForCommand(const QString &cmd) const;

    /// The plugins that the user can switch off and give a hotkey: all but that of "set", each
    /// once, in the alphabetical order of their command words.
    QList<IPlugin *> configurablePlugins() const;

    /// The page of a word's plugin, told the word first; null for an unknown word or no page. A
    /// plugin that is switched off still gives its page.
    QWidget *viewForCommand(const QString &cmd);

    /// The plugin's records for the untouched arguments; the one notice record for a plugin that is
    /// switched off under this very word; empty for an unknown word.
    Q_INVOKABLE QVariantList queryCommand(const QString &cmd, const QString &args);

    /// Hands the action to the plugin that it names, or carries out "launch", "openUrl" and "copy"
    /// itself when it names none that is known. False when nothing was done.
    Q_INVOKABLE bool executeAction(const QVariantMap &action);

    /// All command words, aliases included, in no particular order.
    Q_INVOKABLE QStringList commands() const;

    /// The description of a word's plugin; empty for an unknown word.
    Q_INVOKABLE QString commandDescription(const QString &cmd) const;

    /// Whether the word, typed without arguments, opens its page at once.
    Q_INVOKABLE bool autoEnterForCommand(const QString &cmd) const;

private:
    QHash<QString, IPlugin *> m_plugins;
    Settings *m_settings = nullptr;
};
