// SPDX-License-Identifier: GPL-3.0-or-later
#include "compat/windows/RealInput.h"

#include <QtLogging>

#include <string>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace realinput {

void send(const QStringList &commands)
{
    const std::wstring program = L"Z:\\usr\\bin\\xdotool";
    std::wstring line = program + L' ' + commands.join(u' ').toStdWString();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    // Wine starts this native program but sets no handles in "process", so close none. If
    // QProcess::startDetached() did, it could close the thread's message queue.
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
        qFatal("xdotool cannot be started, error %lu", GetLastError());
    }
}

QString foreground()
{
    HWND window = GetForegroundWindow();
    wchar_t className[256] = {};
    wchar_t title[256] = {};
    GetClassNameW(window, className, 256);
    GetWindowTextW(window, title, 256);
    POINT pointer{};
    GetCursorPos(&pointer);
    return u"the foreground window is \"%1\" of class \"%2\", the pointer is at %3, %4"_s
        .arg(QString::fromWCharArray(title), QString::fromWCharArray(className))
        .arg(pointer.x)
        .arg(pointer.y);
}

} // namespace realinput
