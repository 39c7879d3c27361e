// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The programs that the catalogue always lists, whatever the start menu holds.
enum class BuiltinProgram {
    Notepad,
    Calculator,
    Paint,
    CommandPrompt,
    FileExplorer,
    TaskManager,
    Settings,
    Browser,
};

/// How this system provides one of them.
struct ProgramInfo
{
    QString path;        ///< argument for AppLauncher::launch; never empty
    QString description; ///< in the user's language; may be empty
    QString iconSource;  ///< file, link or address whose icon to show
};

/// On Linux it searches the system at each call; if no such program is installed, the path is the
/// command of a well-known one and the description is empty. For Browser the path is the address of
/// a start page.
ProgramInfo builtinProgram(BuiltinProgram program);

/// The program to start for a path or a command, such as those that builtinProgram() returns. On
/// Windows a command is looked up in the folders of the system and then in those of PATH, never in
/// the program's own or the current folder; empty if it is not found. Elsewhere returns it as it
/// is, since commands are looked up in PATH alone.
QString programFile(const QString &pathOrCommand);

} // namespace platform
