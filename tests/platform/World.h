// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ColorScheme.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The system around the platform headers, as the contract tests need it. Each half of platform/
/// and its fake bring their own bodies; what the functions have made goes with the next reset().
namespace world {

/// A user without programs and without anything that starts at log-in.
void reset();

/// Puts a program into one of the two start-menu folders, 0 being the user's own, and gives the
/// path of its file. The file name comes without a suffix.
QString install(int root, const QString &fileName, const QString &name);

/// The same with an icon of one colour.
QString installWithIcon(const QString &fileName);

/// Whether what a start-menu file holds decides on its name, and on whether it is listed.
bool readsStartMenuFiles();

/// Hides the program from the menus.
void hide(const QString &path);

/// Fills the file with nonsense.
void damage(const QString &path);

/// Whether the program has been started since it was installed.
bool isStarted(const QString &path);

/// Whether something under this program's name starts at log-in.
bool startsAtLogIn();

/// Lets another tool register something under this program's name.
void registerAtLogIn();

/// Has the user prefer these colours from now on. False where nothing that a program does brings
/// that about.
bool preferColors(platform::ColorScheme scheme);

/// A variable of this process's environment that is meant for this process alone.
QString privateVariable();

/// Whether a write into a pipe that nobody reads fails, where it could end the process.
bool failsToWriteIntoAClosedPipe();

/// A desktop that can show folders.
void installFileManager();

/// Whether there are desktops that cannot show folders, such as that of a user without anything.
bool canLackFileManager();

/// What the file manager was to show since the last reset().
QStringList shownFolders();

/// Installs a file index that knows files of these names, and gives their paths.
QStringList installIndex(const QStringList &fileNames);

/// Lets every query fail.
void breakIndex();

/// Takes the index off the system. False where the program could not even start without it.
bool removeIndex();

/// A folder that belongs to somebody else.
QString foreignFolder();

/// The path of a file that belongs to somebody else.
QString foreignFile();

/// Whether a script has put this download in the place of the program, started it, and cleaned up.
/// Both paths are those of files that the case has written.
bool isUpdated(const QString &downloadPath, const QString &programPath);

/// The content of a program that isUpdated() can tell to have been started.
QByteArray newProgram();

} // namespace world
