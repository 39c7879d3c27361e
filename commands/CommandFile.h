// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the file "command.json" in the folder of a user's own command says.
struct CommandFile
{
    /// What the program prints: JSON with items, or a row on each line.
    enum class Output {
        Items,
        Lines,
    };

    /// What Enter does with the argument of a row.
    enum class Action {
        Copy,
        Open,
        Run,
    };

    QString folder;      ///< absolute path
    QString command;     ///< lower case, without blanks
    QString name;        ///< in the user's language
    QString description; ///< in the user's language; may be empty
    QString icon;        ///< absolute path; may be empty
    QStringList exec;    ///< program and arguments, with "{query}" for the text of the user
    Output output = Output::Items;
    Action action = Action::Copy;
    QStringList run;      ///< for Action::Run: program and arguments, with "{arg}"
    int timeoutMs = 5000; ///< from the start of the program
    int delayMs = 0;      ///< from the query to the start of the program

    /// Reads the file in the folder. Returns nothing if it is missing, too large or wrong in any
    /// key, and sets the error to one line for the log, in English: file, key, and what was
    /// expected.
    static std::optional<CommandFile> load(const QString &folder, QString &error);

    /// One line for the log if the command is one of these, which are built in; otherwise nothing.
    QString errorIfIn(const QStringList &builtinCommands) const;

    /// The file in the folder.
    static QString pathIn(const QString &folder);

    /// The absolute form of a path in this file; a relative path starts at the folder.
    QString absolutePath(const QString &path) const;

    /// The program of `exec` or `run`: relative to the folder if it contains a slash; otherwise
    /// the system finds it.
    QString programPath(const QString &program) const;
};
