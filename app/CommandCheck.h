// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QTextStream;

/// "Vaskel --check-command FOLDER [TEXT]": checks the folder of a command for its author, without a
/// window.
namespace commandcheck {

/// Carries out the command line, whose first argument is the program. Needs an application object,
/// but no display. Returns the exit status: failed if something is wrong with the command, misused
/// if the folder is missing or more than a text follows it.
int run(const QStringList &arguments);

/// Queries the command of the folder and prints its rows. Returns the exit status. A wrong file,
/// and a failure of the program or of its answer, are an error.
int check(const QString &folder, const QString &text, QTextStream &output, QTextStream &errors);

} // namespace commandcheck
