// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/ShellOpen.h"

#include <windows.h>

#include <shellapi.h>

namespace platform {

namespace {

// ShellExecuteW returns error codes up to 32, for compatibility with 16-bit Windows.
constexpr INT_PTR lastShellError = 32;

} // namespace

bool shellOpen(const QString &path)
{
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", qUtf16Printable(path), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > lastShellError;
}

} // namespace platform
