// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/SystemFolder.h"

#include <array>

#include <windows.h>

namespace platform {

namespace {

using FolderFunction = UINT(WINAPI *)(LPWSTR, UINT);

QString folderOf(FolderFunction function)
{
    std::array<wchar_t, MAX_PATH> path{};
    const UINT length = function(path.data(), UINT(path.size()));
    return length < path.size() ? QString::fromWCharArray(path.data(), int(length)) : QString();
}

} // namespace

QString systemFolder()
{
    return folderOf(&GetSystemDirectoryW);
}

QString windowsFolder()
{
    return folderOf(&GetWindowsDirectoryW);
}

} // namespace platform
