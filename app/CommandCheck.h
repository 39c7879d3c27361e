// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QTextStream;

/// "Vaskel --check-command FOLDER [TEXT]": checks the folder of a command for its author, without a
/// window.
namespace commandcheck {

/// The commands that no folder can have, with their aliases.
QStringList builtinCommands();

/// Whether the command line asks for a check.
bool isRequested(int argc, const char *const argv[]);

/// Carries out the command line, with an application of its own that needs no display. Returns the
/// exit status: 0; 1 if something is wrong; 2 if the folder is missing on the command line.
int run(int &argc, char *argv[]);

/// Queries the command of the folder and prints its rows. Returns the exit status. A wrong file,
/// and a failure of the program or of its answer, are an error.
int check(const QString &folder, const QString &text, QTextStream &output, QTextStream &errors);

} // namespace commandcheck
