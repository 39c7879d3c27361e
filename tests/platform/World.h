// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ColorScheme.h"
#include "platform/Console.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

class QWindow;

/// The system around the platform headers, for the contract tests. The fake and each half of
/// platform/ have their own bodies. reset() removes everything that the other functions create.
namespace world {

/// Starts over with a user without programs and without auto-start.
void reset();

/// Installs a program in one of the two start-menu folders, 0 for the user's own, and returns the
/// path of its link. The file name has no suffix.
QString install(int root, const QString &fileName, const QString &name);

/// Like install(), with an icon of a single colour.
QString installWithIcon(const QString &fileName);

/// Whether the content of a link decides on its name and on whether it is listed.
bool readsStartMenuFiles();

/// Hides the program from menus.
void hide(const QString &path);

/// Replaces the file's content with invalid data.
void damage(const QString &path);

/// Whether the program has been started since install().
bool isStarted(const QString &path);

/// Whether an entry of this program's name starts at log-in.
bool startsAtLogIn();

/// Adds an entry of this program's name on behalf of another tool.
void registerAtLogIn();

/// Sets the user's preferred scheme. False if a program cannot change it on this system.
bool preferColors(platform::ColorScheme scheme);

/// Starts or ends a compositor. False if a program cannot do this on this system, which then always
/// has one.
bool setCompositing(bool isCompositing);

/// Makes the desktop one that holds hotkeys for programs, or one on which programs grab the keys.
/// False if no desktop of this system holds them.
bool setDesktopHoldsHotkeys(bool isHolding);

/// Whether the window system may give the focus to the window, which has a native window.
bool mayHaveFocus(const QWindow &window);

/// Whether a program of a process tree, or this one, is running.
bool isStillRunning(qint64 process);

/// An environment variable that is meant for this process alone.
QString privateVariable();

/// Whether a write into a pipe without a reader fails; otherwise it may end the process.
bool failsToWriteIntoAClosedPipe();

/// What "write" writes while the starter of this process has redirected the stream into a file.
QString writtenIntoFile(platform::ConsoleStream stream, const std::function<void()> &write);

/// Installs a desktop that can show folders.
void installFileManager();

/// Whether some desktops cannot show folders.
bool canLackFileManager();

/// The folders that the file manager was asked to show since reset().
QStringList shownFolders();

/// Installs a file index with files of these names, and returns their paths.
QStringList installIndex(const QStringList &fileNames);

/// Installs an index that is incomplete until completeIndex(), with a file of this name, and
/// returns its path; empty if an index of this system is never incomplete.
QString installIncompleteIndex(const QString &fileName);
void completeIndex();

/// Makes every query fail.
void breakIndex();

/// Removes the index. False if the program cannot start without it.
bool removeIndex();

/// A folder of another user.
QString foreignFolder();

/// A folder in which another user can replace a file.
QString changeableFolder();

/// The path of another user's file.
QString foreignFile();

/// The path of a pipe or device whose reader may wait for ever.
QString endlessFile();

/// Whether a script has replaced the program with the download, started it, and deleted the files
/// it no longer needs. The case has written the files of both paths.
bool isUpdated(const QString &downloadPath, const QString &programPath);

/// The content of a program whose start isUpdated() can detect.
QByteArray newProgram();

} // namespace world
