// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <windows.h>

/// Ends this process once its standard input closes, and so at the latest with the test that has
/// started it.
inline void endWithInput()
{
    const auto wait = [](LPVOID) -> DWORD {
        char byte = 0;
        DWORD count = 0;
        while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &count, nullptr) && count > 0) {
        }
        TerminateProcess(GetCurrentProcess(), 1);
        return 0;
    };
    CreateThread(nullptr, 0, wait, nullptr, 0, nullptr);
}
