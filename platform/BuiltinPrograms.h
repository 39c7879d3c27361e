// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The jobs for which the catalogue always has a row, whatever the start menu holds.
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

/// The program that does one of these jobs on this system.
struct ProgramInfo
{
    QString path;        ///< what AppLauncher::launch is given; never empty
    QString description; ///< in the user's language; empty if there is nothing to say
    QString iconSource;  ///< the file, link or address that the icon is taken from
};

/// Looks the program up anew at each call. A system without one still gives a path, the name of a
/// command that would do the job if it were installed, and then no description.
ProgramInfo builtinProgram(BuiltinProgram program);

} // namespace platform
