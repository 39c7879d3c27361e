// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ParentConsole.h"

#include <cstdio>

#include <qt_windows.h>

namespace platform {

namespace {

// With a buffer, since the console cannot put the bytes of a character together.
void openConsole(std::FILE *stream)
{
    constexpr std::size_t bufferSize = 65536;
    if (std::freopen("CONOUT$", "w", stream)) {
        std::setvbuf(stream, nullptr, _IOFBF, bufferSize);
    }
}

// Into a file or a pipe, or to NUL, which is no console either.
bool isRedirected(DWORD stream)
{
    const HANDLE handle = GetStdHandle(stream);
    if (!handle || handle == INVALID_HANDLE_VALUE) {
        return false;
    }
    DWORD mode = 0;
    const DWORD type = GetFileType(handle);
    return type == FILE_TYPE_DISK || type == FILE_TYPE_PIPE
           || (type == FILE_TYPE_CHAR && !GetConsoleMode(handle, &mode));
}

} // namespace

struct ParentConsole::Data
{
    UINT codePage; // of the console before
};

ParentConsole::ParentConsole()
{
    if (!AttachConsole(ATTACH_PARENT_PROCESS) && GetLastError() != ERROR_ACCESS_DENIED) {
        return; // the program that has started this one has none either
    }
    if (!isRedirected(STD_OUTPUT_HANDLE)) {
        openConsole(stdout);
    }
    if (!isRedirected(STD_ERROR_HANDLE)) {
        openConsole(stderr);
    }
    // Qt prints UTF-8. The code page is that of the console, which others use afterwards.
    m_data = std::make_unique<Data>(Data{GetConsoleOutputCP()});
    SetConsoleOutputCP(CP_UTF8);
}

ParentConsole::~ParentConsole()
{
    if (m_data) {
        std::fflush(nullptr);
        SetConsoleOutputCP(m_data->codePage);
        FreeConsole();
    }
}

} // namespace platform
