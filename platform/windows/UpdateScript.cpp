// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UpdateScript.h"

#include "platform/windows/SystemFolder.h"

#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>

using namespace Qt::StringLiterals;

namespace platform {

QString updateScript(const QString &downloadPath, const QString &programPath)
{
    // Text mode writes the CRLF line endings that cmd.exe expects.
    return QStringLiteral("@echo off\n"
                          "timeout /t 2 /nobreak >nul\n"
                          "copy /Y \"%1\" \"%2\" >nul\n"
                          "if %errorlevel% neq 0 (\n"
                          "  echo Failed to copy update file\n"
                          "  pause\n"
                          "  exit /b 1\n"
                          ")\n"
                          "del \"%1\" >nul\n"
                          "start \"\" \"%2\"\n"
                          "del \"%~f0\" >nul\n")
        .arg(downloadPath, programPath);
}

void startUpdateScript(const QString &scriptPath)
{
    // By default the interpreter looks for "timeout" in the current folder first, and then in each
    // folder that a user or another program has put before the system's.
    const QString system = systemFolder();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString searchPath = environment.value(u"PATH"_s);
    if (!searchPath.startsWith(system + u';', Qt::CaseInsensitive)) {
        environment.insert(u"PATH"_s, system + u';' + searchPath);
    }
    // The value does not matter; unsetPrivateVariables() of the new program removes this one.
    environment.insert(u"NoDefaultCurrentDirectoryInExePath"_s, u"Vaskel"_s);
    QProcess interpreter;
    interpreter.setProcessEnvironment(environment);
    interpreter.setProgram(system + uR"(\cmd.exe)"_s);
    // The interpreter takes the outer quotation marks away. QProcess would set the inner ones only
    // for a blank, and "Tom&Jerry" would be two commands.
    interpreter.setNativeArguments(uR"(/c ""%1"")"_s.arg(QDir::toNativeSeparators(scriptPath)));
    interpreter.startDetached();
}

} // namespace platform
