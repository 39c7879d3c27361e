// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Starts of the recorder program.
namespace recording {

/// The program. It writes a line for each start to the file in its first argument, or else to one
/// beside itself.
QString program();

/// The starts recorded in the file: the program's path, its working directory and its further
/// arguments.
QList<QStringList> starts(const QString &filePath);

/// Creates the two start-menu folders, since the shell names only existing ones. Empties that of
/// all users, which outlives the test. Ends the process if that folder does not belong to the
/// tests.
void makeStartMenu();

/// Makes the program the shell's handler for folders. It then records them in the file in the
/// variable VASKEL_SHOWN_FOLDERS.
void becomeFileManager();

/// The folders that it has recorded there since, without the separator at their end.
QStringList shownFolders(const QString &filePath);

} // namespace recording
