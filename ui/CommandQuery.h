// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/CommandText.h"

#include <QCoreApplication>
#include <QString>
#include <QVariantList>

class AppLauncher;
class PluginManager;
class Settings;

/// What the text of the command box asks for: a command, an application, or a search of the web. A
/// word with a blank behind it is a command, known or not; so is the trimmed text if it is a known
/// command exactly as it stands.
class CommandQuery
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow) // the context of its texts in the translation files

public:
    /// The services are not owned and must outlive the query, whose text is empty at first.
    CommandQuery(PluginManager *pluginManager, AppLauncher *launcher, Settings *settings);

    void setText(const CommandText &text);

    bool isCommand() const { return m_isCommand; }

    /// The command as it was typed, trimmed; empty if there is none.
    QString command() const { return m_command; }

    /// What stands behind the command and a blank, untrimmed.
    QString arguments() const;

    /// Whether the command opens its page without waiting for Enter: a blank is typed, but no
    /// arguments, and the preferences want it.
    bool opensAtOnce() const;

    /// Asks the command's plugin, or else the launcher, for the records to show. Where they have
    /// none, there is one that searches the web for the text, unless the text is blank.
    QVariantList records() const;

    /// The command and its description for the status line; empty without a command.
    QString statusText() const;

private:
    QVariantMap webSearchRecord(const QString &text) const;

    PluginManager *m_pluginManager;
    AppLauncher *m_launcher;
    Settings *m_settings;
    CommandText m_text;
    bool m_isCommand = false;
    bool m_hasBlank = false; // behind the command
    QString m_command;
    QString m_description;
};
