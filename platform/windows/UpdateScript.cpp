// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UpdateScript.h"

#include <QProcess>
#include <QStringList>

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
    QProcess::startDetached(u"cmd"_s, {u"/c"_s, scriptPath});
}

} // namespace platform
