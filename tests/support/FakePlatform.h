// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/BuiltinPrograms.h"
#include "platform/ColorScheme.h"

#include <QFile>
#include <QHash>
#include <QIcon>
#include <QPixmap>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

class FakeDesktopHotkeys;
class QWidget;
class QWindow;

/// Recording bodies of the platform headers: they answer from fields that a test sets, and record
/// the calls.
struct FakePlatform
{
    // AutoStart.h
    QList<bool> autoStartCalls;
    std::function<void()> duringAutoStartCall;

    // BuiltinPrograms.h; a program without an entry gets a path made from its number
    QHash<int, platform::ProgramInfo> builtinPrograms;
    QHash<QString, QString> programFiles; // a command without an entry is returned unchanged

    // ClosedPipe.h
    bool ignoresClosedPipes = false;

    // ColorScheme.h
    platform::ColorScheme colorScheme = platform::ColorScheme::Unknown;
    QList<std::pair<QPointer<QObject>, std::function<void()>>> colorSchemeWatchers;
    /// Changes the scheme and notifies the watchers.
    void changeColorScheme(platform::ColorScheme scheme);

    // IconTheme.h
    QHash<QString, QIcon> fileTypeIcons;

    // LinkIcons.h
    QHash<QString, QIcon> linkIcons;
    QStringList linkIconCalls;

    // ShellPixmap.h
    QHash<QString, QPixmap> shellPixmaps;
    QStringList shellPixmapCalls;
    QList<int> shellPixmapWidths; // one for each call

    // Compositor.h
    bool isCompositing = true;

    // Console.h
    QString consoleOutput;
    QString consoleErrors;

    // DesktopHotkeys.h
    bool hasDesktopHotkeys = false;
    FakeDesktopHotkeys *desktopHotkeys = nullptr; // the newest

    // File.h; opens files by QDesktopServices

    // FileIndex.h; an empty path counts as unreadable and matches every text
    QString indexName = QStringLiteral("Fake");
    QStringList indexedPaths;
    std::optional<unsigned> indexError;
    QList<std::pair<QString, unsigned>> indexSearches; // of text and limit
    QList<std::pair<QPointer<QObject>, std::function<void()>>> indexWatchers;
    /// Completes the index: searches no longer give error 104, that of an unfinished one. Notifies
    /// the watchers.
    void completeIndex();

    // FloatingWindow.h
    QList<const QWindow *> dialogs;
    QList<const QWindow *> unmanagedWindows;
    bool canPlaceWindows = true;

    // Folder.h
    bool openFolderResult = true;
    QStringList openedFolders;

    // FolderEntries.h; the real folders
    QStringList listedFolders;

    // ContainingFolder.h; a path that does not exist is refused
    bool showInFolderResult = true;
    QStringList filesShownInFolder;

    // Link.h
    QString linkSuffix = QStringLiteral("link");
    bool openLinkResult = true;
    QStringList openedLinks;

    // PrivateFile.h; other files open normally, but not a second time while they are open, which
    // some systems refuse
    QStringList foreignFiles;
    QHash<QString, QPointer<QFile>> privateFiles;

    // PrivateFolder.h; other folders are created, and protected
    QStringList foreignFolders;
    QStringList privateFolders;
    QStringList unprotectedFolders;
    std::optional<QString> temporaryFolder; // the system's if there is none

    // ProcessTree.h; only the program itself ends
    int endedProcessTrees = 0;

    // RegularFile.h; other files open normally
    QStringList irregularFiles;

    // StartMenu.h; a file without an entry is listed under its complete base name
    QStringList startMenuRoots;
    QHash<QString, QString> startMenuNames;
    QStringList unlistedFiles;
    QList<std::pair<QString, QString>> startMenuNameCalls;

    // UpdateScript.h; pairs of download and program
    QString updateScript = QStringLiteral("script\n");
    QList<std::pair<QString, QString>> updateScriptCalls;
    QStringList startedUpdateScripts;

    // WindowActivation.h
    QList<const QWidget *> activatedWindows;

    // WindowFocus.h
    QList<const QWindow *> windowsWithoutFocus;
};

/// The state of the fake bodies; assign FakePlatform() to reset it.
FakePlatform &fakePlatform();
