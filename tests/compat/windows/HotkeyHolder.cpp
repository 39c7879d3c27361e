// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: HotkeyHolder MODIFIERS KEY
//
// Registers a hotkey; both numbers are arguments of RegisterHotKey. Shows the result as the window
// title "holding" or "refused". Ends when it is killed or its standard input closes, so that it
// does not hold the hotkey after a killed test.

#include "EndWithInput.h"

#include <cstdlib>

#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    endWithInput();
    const bool isHolding = RegisterHotKey(nullptr, 1, UINT(strtoul(__argv[1], nullptr, 0)),
                                          UINT(strtoul(__argv[2], nullptr, 0)));
    CreateWindowExW(0, L"STATIC", isHolding ? L"holding" : L"refused", WS_POPUP, 0, 0, 1, 1,
                    nullptr, nullptr, instance, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
