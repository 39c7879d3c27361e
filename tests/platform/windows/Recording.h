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

/// Creates the two start-menu folders, since the shell names only existing ones. Ends the process
/// if that of all users does not belong to the tests.
void makeStartMenu();

/// Like makeStartMenu(), and removes the links of all users, which outlive a test. All tests share
/// that folder, so only one test at a time may call this or install links there.
void makeEmptyStartMenu();

/// Makes the program the shell's handler for folders. It then records them in the file in the
/// variable VASKEL_SHOWN_FOLDERS.
void becomeFileManager();

/// The folders that it has recorded there since, without the separator at their end.
QStringList shownFolders(const QString &filePath);

} // namespace recording
