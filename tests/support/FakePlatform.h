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
#include <utility>

/// The recording bodies of the platform headers: they answer from fields that a test fills in and
/// keep what they were asked.
struct FakePlatform
{
    // AutoStart.h
    QList<bool> autoStartCalls;
    std::function<void()> duringAutoStartCall;

    // BuiltinPrograms.h; a program without an entry gets a path made of its number
    QHash<int, platform::ProgramInfo> builtinPrograms;

    // ClosedPipe.h
    bool ignoresClosedPipes = false;

    // ColorScheme.h
    platform::ColorScheme colorScheme = platform::ColorScheme::Unknown;
    QList<std::pair<QPointer<QObject>, std::function<void()>>> colorSchemeWatchers;
    /// Changes the scheme and tells those who watch it.
    void changeColorScheme(platform::ColorScheme scheme);

    // FileIcon.h
    QHash<QString, QIcon> linkIcons;
    QHash<QString, QPixmap> shellPixmaps;
    QStringList shellPixmapCalls;

    // FileIndex.h; a path that is empty counts as one that cannot be read, and fits every text
    QString indexName = QStringLiteral("Fake");
    QStringList indexedPaths;
    unsigned indexError = 0;
    QStringList indexCalls; // each function's name with its argument

    // Folder.h
    bool openFolderResult = true;
    QStringList openedFolders;

    // Link.h
    QString linkSuffix = QStringLiteral("link");
    bool openLinkResult = true;
    QStringList openedLinks;

    // PrivateFile.h; any other file is opened as usual, unless it is open, which some systems
    // refuse
    QStringList foreignFiles;
    QHash<QString, QPointer<QFile>> privateFiles;

    // PrivateFolder.h; any other folder is made
    QStringList foreignFolders;

    // StartMenu.h; a file without an entry is listed under its complete base name
    QStringList startMenuRoots;
    QHash<QString, QString> startMenuNames;
    QStringList unlistedFiles;
    QList<std::pair<QString, QString>> startMenuNameCalls;

    // UpdateScript.h; the pairs are of download and program
    QString updateScript = QStringLiteral("script\n");
    QList<std::pair<QString, QString>> updateScriptCalls;
    QStringList startedUpdateScripts;
};

/// The one state of the fake bodies; assign FakePlatform() to start anew.
FakePlatform &fakePlatform();
