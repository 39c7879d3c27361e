// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/World.h"

#include "support/FakePlatform.h"
#include "support/TestHome.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace world {

void reset()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    fakePlatform().startMenuRoots = {testhome::path() + "/user"_L1, testhome::path() + "/all"_L1};
    qputenv(qPrintable(privateVariable()), "private");
    fakePlatform().openFolderResult = false;
    fakePlatform().showInFolderResult = false;
}

QString install(int root, const QString &fileName, const QString &name)
{
    const QString folder = root == 0 ? u"user/"_s : u"all/"_s;
    QString path = testhome::writeFile(folder + fileName + ".link"_L1, {});
    fakePlatform().startMenuNames.insert(path, name);
    if (root != 0 && QFile::exists(testhome::path() + "/user/"_L1 + fileName + ".link"_L1)) {
        fakePlatform().unlistedFiles.append(path);
    }
    return path;
}

QString installWithIcon(const QString &fileName)
{
    QString path = install(0, fileName, fileName);
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::red);
    fakePlatform().linkIcons.insert(path, QIcon(pixmap));
    return path;
}

bool readsStartMenuFiles()
{
    return true;
}

void hide(const QString &path)
{
    fakePlatform().unlistedFiles.append(path);
}

void damage(const QString &path)
{
    fakePlatform().unlistedFiles.append(path);
    fakePlatform().linkIcons.remove(path);
    fakePlatform().openLinkResult = false;
}

bool isStarted(const QString &path)
{
    return fakePlatform().openLinkResult && fakePlatform().openedLinks.contains(path);
}

bool startsAtLogIn()
{
    return !fakePlatform().autoStartCalls.isEmpty() && fakePlatform().autoStartCalls.last();
}

void registerAtLogIn()
{
    fakePlatform().autoStartCalls.append(true);
}

bool preferColors(platform::ColorScheme scheme)
{
    fakePlatform().changeColorScheme(scheme);
    return true;
}

bool setCompositing(bool isCompositing)
{
    fakePlatform().isCompositing = isCompositing;
    return true;
}

bool setDesktopHoldsHotkeys(bool isHolding)
{
    fakePlatform().hasDesktopHotkeys = isHolding;
    return true;
}

bool mayHaveFocus(const QWindow &window)
{
    return !fakePlatform().windowsWithoutFocus.contains(&window);
}

bool isStillRunning(qint64 process)
{
    return process == QCoreApplication::applicationPid() || fakePlatform().endedProcessTrees == 0;
}

QString privateVariable()
{
    return u"VASKEL_PRIVATE"_s;
}

bool failsToWriteIntoAClosedPipe()
{
    return fakePlatform().ignoresClosedPipes;
}

QString writtenIntoFile(platform::ConsoleStream stream, const std::function<void()> &write)
{
    write();
    return stream == platform::ConsoleStream::Output ? fakePlatform().consoleOutput
                                                     : fakePlatform().consoleErrors;
}

void installFileManager()
{
    fakePlatform().openFolderResult = true;
    fakePlatform().showInFolderResult = true;
}

bool canLackFileManager()
{
    return true;
}

QStringList shownFolders()
{
    QStringList folders = fakePlatform().openedFolders;
    for (const QString &path : std::as_const(fakePlatform().filesShownInFolder)) {
        folders.append(QFileInfo(path).path());
    }
    return folders;
}

QStringList installIndex(const QStringList &fileNames)
{
    for (const QString &fileName : fileNames) {
        fakePlatform().indexedPaths.append("/files/"_L1 + fileName);
    }
    return fakePlatform().indexedPaths;
}

QString installIncompleteIndex(const QString &fileName)
{
    fakePlatform().indexError = 104;
    return installIndex({fileName}).first();
}

void completeIndex()
{
    fakePlatform().completeIndex();
}

void breakIndex()
{
    fakePlatform().indexError = 1;
}

bool removeIndex()
{
    fakePlatform().indexName.clear();
    fakePlatform().indexError = 1;
    return true;
}

QString foreignFolder()
{
    QString path = testhome::path() + "/foreign"_L1;
    fakePlatform().foreignFolders.append(path);
    return path;
}

QString changeableFolder()
{
    return foreignFolder();
}

QString foreignFile()
{
    QString path = testhome::writeFile(u"tmp/foreign"_s, "foreign");
    fakePlatform().foreignFiles.append(path);
    return path;
}

QString endlessFile()
{
    QString path = testhome::writeFile(u"tmp/pipe"_s, "no end");
    fakePlatform().irregularFiles.append(path);
    return path;
}

bool isUpdated(const QString &downloadPath, const QString &programPath)
{
    return !fakePlatform().startedUpdateScripts.isEmpty()
           && fakePlatform().updateScriptCalls.contains(std::pair(downloadPath, programPath));
}

QByteArray newProgram()
{
    return "new program";
}

} // namespace world
