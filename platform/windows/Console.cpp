// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Console.h"

#include "platform/windows/Owner.h"

#include <QByteArray>

#include <windows.h>

namespace platform {

namespace {

// A program with a window has a stream only if its starter has redirected it.
bool writeToStream(HANDLE stream, const QString &text)
{
    if (!stream || stream == INVALID_HANDLE_VALUE || GetFileType(stream) == FILE_TYPE_UNKNOWN) {
        return false;
    }
    DWORD written = 0;
    if (GetConsoleMode(stream, &written)) {
        return WriteConsoleW(stream, text.utf16(), DWORD(text.size()), &written, nullptr);
    }
    const QByteArray bytes = text.toUtf8();
    return WriteFile(stream, bytes.constData(), DWORD(bytes.size()), &written, nullptr);
}

void writeToParentConsole(const QString &text)
{
    if (!AttachConsole(ATTACH_PARENT_PROCESS)) {
        return;
    }
    {
        const Handle console(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                         0, nullptr));
        // The shell has not waited for this program, so its prompt is already on the line.
        writeToStream(console.get(), u'\n' + text);
    }
    FreeConsole();
}

} // namespace

void writeToConsole(ConsoleStream stream, const QString &text)
{
    const HANDLE redirected =
        GetStdHandle(stream == ConsoleStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    if (!writeToStream(redirected, text)) {
        writeToParentConsole(text);
    }
}

} // namespace platform
