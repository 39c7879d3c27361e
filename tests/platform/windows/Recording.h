// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// What the recorder program has told of its starts.
namespace recording {

/// The program, which writes a line for each start into the file that its first argument names, or
/// else beside itself.
QString program();

/// The starts that have been told in the file so far, each by the program's path, its working
/// directory and its further arguments.
QList<QStringList> starts(const QString &filePath);

/// Makes the two folders of the start menu, which the shell does not name before they are there,
/// and empties that of all users, which outlives the test. The process ends where it is not the
/// tests'.
void makeStartMenu();

/// Has the shell start the program for folders, which then tells them in the file that the variable
/// VASKEL_SHOWN_FOLDERS names.
void becomeFileManager();

} // namespace recording
