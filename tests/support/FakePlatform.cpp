// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FakePlatform.h"

#include "platform/AutoStart.h"
#include "platform/ClosedPipe.h"
#include "platform/Compositor.h"
#include "platform/Console.h"
#include "platform/ContainingFolder.h"
#include "platform/File.h"
#include "platform/FileIndex.h"
#include "platform/FloatingWindow.h"
#include "platform/Folder.h"
#include "platform/FolderEntries.h"
#include "platform/FontLibrary.h"
#include "platform/IconTheme.h"
#include "platform/Link.h"
#include "platform/LinkIcons.h"
#include "platform/PrivateFile.h"
#include "platform/PrivateFolder.h"
#include "platform/ProcessEnvironment.h"
#include "platform/ProcessTree.h"
#include "platform/RegularFile.h"
#include "platform/ShellPixmap.h"
#include "platform/StartMenu.h"
#include "platform/TrustedFolder.h"
#include "platform/UpdateScript.h"
#include "platform/WindowActivation.h"
#include "platform/WindowFocus.h"
#include "support/FakeDesktopHotkeys.h"

#include <QDesktopServices>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

FakePlatform &fakePlatform()
{
    static FakePlatform state;
    return state;
}

void FakePlatform::changeColorScheme(platform::ColorScheme scheme)
{
    colorScheme = scheme;
    const auto watchers = colorSchemeWatchers;
    for (const auto &[context, changed] : watchers) {
        if (context) {
            changed();
        }
    }
}

void FakePlatform::completeIndex()
{
    indexError.reset();
    const auto watchers = indexWatchers;
    for (const auto &[context, completed] : watchers) {
        if (context) {
            completed();
        }
    }
}

namespace platform {

void applyAutoStart(bool enabled)
{
    fakePlatform().autoStartCalls.append(enabled);
    if (fakePlatform().duringAutoStartCall) {
        fakePlatform().duringAutoStartCall();
    }
}

ProgramInfo builtinProgram(BuiltinProgram program)
{
    const ProgramInfo unknown{u"program%1"_s.arg(int(program)), {}, {}};
    return fakePlatform().builtinPrograms.value(int(program), unknown);
}

QString programFile(const QString &pathOrCommand)
{
    return fakePlatform().programFiles.value(pathOrCommand, pathOrCommand);
}

void ignoreClosedPipes()
{
    fakePlatform().ignoresClosedPipes = true;
}

ColorScheme colorScheme()
{
    return fakePlatform().colorScheme;
}

void watchColorScheme(QObject *context, const std::function<void()> &changed)
{
    fakePlatform().colorSchemeWatchers.append({context, changed});
}

std::unique_ptr<DesktopHotkeys> createDesktopHotkeys(QWindow *)
{
    return fakePlatform().hasDesktopHotkeys ? std::make_unique<FakeDesktopHotkeys>() : nullptr;
}

bool isCompositing()
{
    return fakePlatform().isCompositing;
}

void writeToConsole(ConsoleStream stream, const QString &text)
{
    (stream == ConsoleStream::Output ? fakePlatform().consoleOutput : fakePlatform().consoleErrors)
        .append(text);
}

struct LinkIcons::Memory
{
};

LinkIcons::LinkIcons() = default;
LinkIcons::~LinkIcons() = default;

QIcon LinkIcons::icon(const QString &filePath)
{
    fakePlatform().linkIconCalls.append(filePath);
    return fakePlatform().linkIcons.value(filePath);
}

QPixmap shellPixmap(const QString &path, int width)
{
    fakePlatform().shellPixmapCalls.append(path);
    fakePlatform().shellPixmapWidths.append(width);
    return fakePlatform().shellPixmaps.value(path);
}

namespace fileindex {

QString name()
{
    return fakePlatform().indexName;
}

void watch(QObject *context, const std::function<void()> &completed)
{
    fakePlatform().indexWatchers.append({context, completed});
}

Answer search(const QString &text, unsigned limit)
{
    fakePlatform().indexSearches.append({text, limit});
    if (fakePlatform().indexError) {
        return {fakePlatform().indexError, {}};
    }
    Answer answer;
    for (const QString &path : std::as_const(fakePlatform().indexedPaths)) {
        if (static_cast<unsigned>(answer.paths.size()) < limit
            && (path.isEmpty() || path.contains(text.trimmed(), Qt::CaseInsensitive))) {
            answer.paths.append(path);
        }
    }
    return answer;
}

} // namespace fileindex

bool showInFolder(const QString &path)
{
    if (!QFileInfo::exists(path) || !fakePlatform().showInFolderResult) {
        return false;
    }
    fakePlatform().filesShownInFolder.append(path);
    return true;
}

// Tests replace the desktop.
bool openFile(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool openFolder(const QString &path)
{
    fakePlatform().openedFolders.append(path);
    return fakePlatform().openFolderResult;
}

QList<FolderEntry> folderEntries(const QString &path)
{
    fakePlatform().listedFolders.append(path);
    QList<FolderEntry> entries;
    QDirIterator found(path, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
    while (found.hasNext()) {
        found.next();
        entries.append({found.fileName(), found.fileInfo().isDir()});
    }
    return entries;
}

FontLibrary::FontLibrary() = default;

void FontLibrary::wait() {}

void ensureIconTheme() {}

QIcon fileTypeIcon(const QFileInfo &file)
{
    return fakePlatform().fileTypeIcons.value(file.filePath());
}

QString linkSuffix()
{
    return fakePlatform().linkSuffix;
}

bool openLink(const QString &filePath)
{
    fakePlatform().openedLinks.append(filePath);
    return fakePlatform().openLinkResult;
}

bool openPrivateFile(QFile &file, QIODevice::OpenMode mode)
{
    QPointer<QFile> &last = fakePlatform().privateFiles[file.fileName()];
    if (fakePlatform().foreignFiles.contains(file.fileName()) || (last && last->isOpen())) {
        return false;
    }
    last = &file;
    return file.open(mode);
}

bool makePrivateFolder(const QString &path)
{
    fakePlatform().privateFolders.append(path);
    return !fakePlatform().foreignFolders.contains(path) && QDir().mkpath(path);
}

bool openRegularFile(QFile &file)
{
    return !fakePlatform().irregularFiles.contains(file.fileName())
           && file.open(QIODevice::ReadOnly);
}

bool isProtectedFolder(const QString &path)
{
    return !fakePlatform().unprotectedFolders.contains(path) && QFileInfo(path).isDir();
}

QString temporaryFolder()
{
    return fakePlatform().temporaryFolder.value_or(
        QStandardPaths::writableLocation(QStandardPaths::TempLocation));
}

void chooseWindowSystem() {}

void unsetPrivateVariables()
{
    qunsetenv("VASKEL_PRIVATE");
}

WithoutWindowSystem::WithoutWindowSystem() = default;
WithoutWindowSystem::~WithoutWindowSystem() = default;

QStringList startMenuRoots()
{
    return fakePlatform().startMenuRoots;
}

QHash<QString, QString> startMenuNames(const QString &root, const QStringList &filePaths)
{
    QHash<QString, QString> names;
    for (const QString &filePath : filePaths) {
        fakePlatform().startMenuNameCalls.append({root, filePath});
        if (!fakePlatform().unlistedFiles.contains(filePath)) {
            names.insert(filePath, fakePlatform().startMenuNames.value(
                                       filePath, QFileInfo(filePath).completeBaseName()));
        }
    }
    return names;
}

QString updateScript(const QString &downloadPath, const QString &programPath)
{
    fakePlatform().updateScriptCalls.append({downloadPath, programPath});
    return fakePlatform().updateScript;
}

void startUpdateScript(const QString &scriptPath)
{
    fakePlatform().startedUpdateScripts.append(scriptPath);
}

void keepFloating(QWindow *window, Floating floating)
{
    (floating == Floating::AsDialog ? fakePlatform().dialogs : fakePlatform().unmanagedWindows)
        .append(window);
}

bool canPlaceWindows()
{
    return fakePlatform().canPlaceWindows;
}

void prepareActivation(QWidget *window)
{
    fakePlatform().activatedWindows.append(window);
}

void refuseFocus(QWindow *window)
{
    fakePlatform().windowsWithoutFocus.append(window);
}

void refuseFocusOfTray() {}

bool isTrustedFolder(const QString &path)
{
    return !fakePlatform().foreignFolders.contains(path);
}

struct ProcessTree::Data
{
};

ProcessTree::ProcessTree() = default;
ProcessTree::~ProcessTree() = default;

void ProcessTree::prepare(QProcess & /*process*/) {}

void ProcessTree::end(QProcess &process)
{
    ++fakePlatform().endedProcessTrees;
    process.kill();
}

} // namespace platform
