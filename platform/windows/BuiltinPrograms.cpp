// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

#include "platform/windows/SystemFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

#include <algorithm>
#include <iterator>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QString description(const char *text)
{
    return QCoreApplication::translate("AppLauncher", text);
}

// programFile() looks the bare command up; only the icon needs a full path.
ProgramInfo systemProgram(const QString &command, const QString &description)
{
    return {command, description,
            qEnvironmentVariable("SystemRoot") + uR"(\System32\)"_s + command + ".exe"_L1};
}

// Relative folders depend on the current one.
QStringList programFolders()
{
    QStringList folders = {systemFolder(), windowsFolder()};
    const QStringList searchPath = qEnvironmentVariable("PATH").split(u';');
    std::copy_if(searchPath.begin(), searchPath.end(), std::back_inserter(folders),
                 &QDir::isAbsolutePath);
    return folders;
}

// Unlike QFileInfo::isFile(), also true for the aliases of packaged programs.
bool isFile(const QString &path)
{
    const DWORD attributes = GetFileAttributesW(qUtf16Printable(path));
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

ProgramInfo builtinProgram(BuiltinProgram program)
{
    const QString settings = u"ms-settings:"_s;
    const QString startPage = u"https://www.bing.com/"_s;
    switch (program) {
    case BuiltinProgram::Notepad:
        return systemProgram(u"notepad"_s,
                             description(QT_TRANSLATE_NOOP("AppLauncher", "Windows Notepad")));
    case BuiltinProgram::Calculator:
        return systemProgram(u"calc"_s,
                             description(QT_TRANSLATE_NOOP("AppLauncher", "Windows Calculator")));
    case BuiltinProgram::Paint:
        return systemProgram(u"mspaint"_s,
                             description(QT_TRANSLATE_NOOP("AppLauncher", "Windows Paint")));
    case BuiltinProgram::CommandPrompt:
        return systemProgram(u"cmd"_s,
                             description(QT_TRANSLATE_NOOP("AppLauncher", "CMD Command Line")));
    case BuiltinProgram::FileExplorer:
        return {u"explorer"_s, description(QT_TRANSLATE_NOOP("AppLauncher", "File Explorer")),
                qEnvironmentVariable("SystemRoot") + uR"(\explorer.exe)"_s};
    case BuiltinProgram::TaskManager:
        return systemProgram(u"taskmgr"_s,
                             description(QT_TRANSLATE_NOOP("AppLauncher", "Windows Task Manager")));
    case BuiltinProgram::Settings:
        return {settings, description(QT_TRANSLATE_NOOP("AppLauncher", "Windows Settings")),
                settings};
    case BuiltinProgram::Browser:
        break;
    }
    return {startPage, description(QT_TRANSLATE_NOOP("AppLauncher", "Open Bing Search")),
            startPage};
}

QString programFile(const QString &pathOrCommand)
{
    if (pathOrCommand.contains(u'\\') || pathOrCommand.contains(u'/')) {
        return pathOrCommand;
    }
    const QString fileName =
        pathOrCommand.contains(u'.') ? pathOrCommand : pathOrCommand + ".exe"_L1;
    const QStringList folders = programFolders();
    for (const QString &folder : folders) {
        QString path = folder + u'\\' + fileName;
        if (isFile(path)) {
            return path;
        }
    }
    return {};
}

} // namespace platform
