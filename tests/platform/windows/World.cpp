// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/World.h"

#include "platform/windows/EverythingLibrary.h"
#include "platform/windows/Recording.h"
#include "platform/windows/ShellLink.h"
#include "support/RunningProcess.h"
#include "support/TestHome.h"

#include "platform/StartMenu.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSettings>
#include <QStringList>
#include <QStyleHints>
#include <QWindow>

#include <utility>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

QSettings logInPrograms()
{
    return QSettings(uR"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Run)"_s,
                     QSettings::NativeFormat);
}

QString startedMark(const QString &path)
{
    return testhome::path() + u'/' + QString::number(qHash(path, 0), 16) + ".started"_L1;
}

// All tests share the start menu of all users, which outlives them.
QStringList &commonLinks()
{
    static QStringList links;
    return links;
}

QString makeLink(int root, const QString &name)
{
    QString path = platform::startMenuRoots().at(root) + u'/' + name + ".lnk"_L1;
    if (root == 1) {
        commonLinks().append(path);
    }
    const ShellLink link{recording::program(), u'"' + startedMark(path) + u'"', {}, {}};
    if (!link.write(path)) {
        qFatal("cannot write %s", qUtf8Printable(path));
    }
    return path;
}

QString shownFoldersFile()
{
    return testhome::path() + "/shown.txt"_L1;
}

} // namespace

namespace world {

void reset()
{
    testhome::reset();
    // Wine's command interpreter treats a path with forward slashes as a file of the working
    // directory, so "del" deletes that file and not the one at the path.
    QDir::setCurrent(testhome::path() + "/tmp"_L1);
    qputenv("VASKEL_SHOWN_FOLDERS", shownFoldersFile().toLocal8Bit());
    EverythingTest_SetFiles(L"");
    for (const QString &link : std::as_const(commonLinks())) {
        QFile::remove(link);
    }
    commonLinks().clear();
    recording::makeStartMenu();
    recording::becomeFileManager();
}

// A link has no name besides its file name.
QString install(int root, const QString &, const QString &name)
{
    return makeLink(root, name);
}

// The icon of the program, which is red.
QString installWithIcon(const QString &fileName)
{
    return makeLink(0, fileName);
}

bool readsStartMenuFiles()
{
    return false;
}

void hide(const QString &path)
{
    SetFileAttributesW(qUtf16Printable(QDir::toNativeSeparators(path)), FILE_ATTRIBUTE_HIDDEN);
}

void damage(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("nonsense") < 0) {
        qFatal("cannot write %s", qUtf8Printable(path));
    }
}

bool isStarted(const QString &path)
{
    return !recording::starts(startedMark(path)).isEmpty();
}

bool startsAtLogIn()
{
    return logInPrograms().contains(u"Vaskel"_s);
}

void registerAtLogIn()
{
    logInPrograms().setValue(u"Vaskel"_s, u"by hand"_s);
}

// Since Qt 6.8 a program can set the property, and Qt then uses it as the system's scheme.
bool preferColors(platform::ColorScheme scheme)
{
    return QGuiApplication::styleHints()->setProperty(
        "colorScheme", scheme == platform::ColorScheme::Dark ? u"Dark"_s : u"Light"_s);
}

bool setCompositing(bool)
{
    return false;
}

bool setDesktopHoldsHotkeys(bool)
{
    return false;
}

bool mayHaveFocus(const QWindow &window)
{
    const auto handle = reinterpret_cast<HWND>(window.winId());
    return !(GetWindowLongPtrW(handle, GWL_EXSTYLE) & WS_EX_NOACTIVATE);
}

bool isStillRunning(qint64 process)
{
    return isRunning(process);
}

QString privateVariable()
{
    return {};
}

bool failsToWriteIntoAClosedPipe()
{
    HANDLE end = nullptr;
    HANDLE otherEnd = nullptr;
    if (!CreatePipe(&end, &otherEnd, nullptr, 0)) {
        return false;
    }
    CloseHandle(end);
    DWORD written = 0;
    const bool fails = !WriteFile(otherEnd, "x", 1, &written, nullptr);
    CloseHandle(otherEnd);
    return fails;
}

QString writtenIntoFile(platform::ConsoleStream stream, const std::function<void()> &write)
{
    const DWORD number =
        stream == platform::ConsoleStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE;
    const QString path = testhome::path() + "/console"_L1;
    const HANDLE original = GetStdHandle(number);
    const HANDLE redirected = CreateFileW(qUtf16Printable(path), GENERIC_WRITE, FILE_SHARE_READ,
                                          nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    SetStdHandle(number, redirected);
    write();
    SetStdHandle(number, original);
    CloseHandle(redirected);
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// Every Windows has one; reset() installs it.
void installFileManager() {}

bool canLackFileManager()
{
    return false;
}

QStringList shownFolders()
{
    return recording::shownFolders(shownFoldersFile());
}

QStringList installIndex(const QStringList &fileNames)
{
    QStringList paths;
    for (const QString &fileName : fileNames) {
        paths.append(uR"(C:\files\)"_s + fileName);
    }
    EverythingTest_SetFiles(qUtf16Printable(paths.join(u'\n')));
    return paths;
}

QString installIncompleteIndex(const QString &)
{
    return {};
}

void completeIndex() {}

void breakIndex()
{
    EverythingTest_Fail(1);
}

bool removeIndex()
{
    return false;
}

// A program cannot give a folder away under wine, so with-wine creates one.
QString foreignFolder()
{
    return qEnvironmentVariable("VASKEL_FOREIGN_FOLDER");
}

QString changeableFolder()
{
    return foreignFolder();
}

QString foreignFile()
{
    return qEnvironmentVariable("VASKEL_FOREIGN_FILE");
}

// Every folder has this name of the console.
QString endlessFile()
{
    return testhome::path() + "/tmp/CON"_L1;
}

bool isUpdated(const QString &downloadPath, const QString &programPath)
{
    QFile program(programPath);
    return !recording::starts(programPath + ".txt"_L1).isEmpty()
           && program.open(QIODevice::ReadOnly) && program.readAll() == newProgram()
           && !QFile::exists(downloadPath);
}

// Records its starts in a file beside itself.
QByteArray newProgram()
{
    QFile program(recording::program());
    if (!program.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qUtf8Printable(program.fileName()));
    }
    return program.readAll();
}

} // namespace world
