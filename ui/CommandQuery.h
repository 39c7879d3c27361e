// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/CommandText.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVariantList>

class AppLauncher;
class IPlugin;
class PluginManager;
class Settings;

/// Decides whether the text of the command box is a command, a program search or a web search.
/// A text is a command, known or unknown, if a blank follows its first word and none precedes it.
/// Otherwise it is a command if the trimmed text equals a known one, in lower case.
class CommandQuery
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow) // its context in the translation files

public:
    /// The services are not owned and must outlive the query. The text is empty at first.
    CommandQuery(PluginManager *pluginManager, AppLauncher *launcher, Settings *settings);

    void setText(const CommandText &text);
    QString text() const { return m_text.joined(); }

    bool isCommand() const { return m_isCommand; }

    /// The command as it was typed, trimmed; empty if there is none.
    QString command() const { return m_command; }

    /// The text after the command and one blank, untrimmed; empty without a command.
    QString arguments() const;

    /// Whether the command opens its page without Enter: a blank follows it, the arguments are
    /// blank, and the preference for it is on.
    bool opensAtOnce() const;

    /// Returns the records of the command's plugin or of the program search. If there are none
    /// and the text is not blank, returns one record that searches the web for the text.
    QVariantList records() const;

    /// The texts by which records() finds programs and files. Empty for a command that makes its
    /// records in another way.
    QStringList searchTexts() const;

    /// The command and its description for the status line; empty without a command.
    QString statusText() const;

private:
    QVariantMap webSearchRecord(const QString &text) const;

    PluginManager *m_pluginManager;
    AppLauncher *m_launcher;
    Settings *m_settings;
    CommandText m_text;
    bool m_isCommand = false;
    bool m_hasBlank = false; // after the command
    QString m_command;
    const IPlugin *m_plugin = nullptr; // of the command; null for an unknown one
};
