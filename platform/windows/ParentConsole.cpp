// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ParentConsole.h"

#include <cstdio>

#include <qt_windows.h>

namespace platform {

namespace {

bool isRedirected(DWORD stream)
{
    const HANDLE handle = GetStdHandle(stream);
    return handle && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

} // namespace

struct ParentConsole::Data
{
    UINT codePage; // of the console before
};

ParentConsole::ParentConsole()
{
    const bool isOutputRedirected = isRedirected(STD_OUTPUT_HANDLE);
    const bool isErrorRedirected = isRedirected(STD_ERROR_HANDLE);
    if ((isOutputRedirected && isErrorRedirected) || !AttachConsole(ATTACH_PARENT_PROCESS)) {
        return;
    }
    if (!isOutputRedirected) {
        std::freopen("CONOUT$", "w", stdout);
    }
    if (!isErrorRedirected) {
        std::freopen("CONOUT$", "w", stderr);
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
