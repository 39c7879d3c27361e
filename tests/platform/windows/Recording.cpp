// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Recording.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <string>

#include <windows.h>

#include <shlobj.h>

namespace recording {

namespace {

QString makeFolder(int folder)
{
    wchar_t path[MAX_PATH];
    SHGetFolderPathW(nullptr, folder | CSIDL_FLAG_CREATE, nullptr, 0, path);
    return QString::fromWCharArray(path);
}

} // namespace

QString program()
{
    return QDir::fromNativeSeparators(QStringLiteral(RECORDER));
}

QList<QStringList> starts(const QString &filePath)
{
    QFile file(filePath);
    QList<QStringList> starts;
    if (!file.open(QIODevice::ReadOnly)) {
        return starts;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        starts.append(line.split(u'\t'));
    }
    return starts;
}

void makeStartMenu()
{
    if (qEnvironmentVariableIsEmpty("VASKEL_TEST_PREFIX")) {
        qFatal("the start menu of all users is not one of the tests");
    }
    makeFolder(CSIDL_PROGRAMS);
    makeFolder(CSIDL_COMMON_PROGRAMS);
}

void makeEmptyStartMenu()
{
    makeStartMenu();
    for (const int folder : {CSIDL_PROGRAMS, CSIDL_COMMON_PROGRAMS}) {
        QDirIterator links(makeFolder(folder), {QStringLiteral("*.lnk")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (links.hasNext()) {
            QFile::remove(links.next());
        }
    }
}

void becomeFileManager()
{
    const std::wstring command = QStringLiteral("\"%1\" --shown \"%2\"")
                                     .arg(QDir::toNativeSeparators(program()), QStringLiteral("%1"))
                                     .toStdWString();
    // With this key the shell would wait for wine's file manager and report a failed start.
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Folder\\shell\\open\\ddeexec");
    for (const wchar_t *key : {L"Software\\Classes\\Folder\\shell\\open\\command",
                               L"Software\\Classes\\Directory\\shell\\open\\command"}) {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, nullptr, REG_SZ, command.c_str(),
                        DWORD((command.size() + 1) * sizeof(wchar_t)));
    }
}

// Wine passes the path on as it is given. A separator before the closing quotation mark of the
// command then hides that mark.
QStringList shownFolders(const QString &filePath)
{
    QStringList folders;
    const QList<QStringList> all = starts(filePath);
    for (const QStringList &start : all) {
        QString path = QDir::fromNativeSeparators(start.value(2));
        while (path.endsWith(u'"') || path.endsWith(u'/')) {
            path.chop(1);
        }
        folders.append(path);
    }
    return folders;
}

} // namespace recording
