// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: HotkeyHolder MODIFIERS KEY
//
// Holds a hotkey, both numbers as RegisterHotKey takes them. Makes a window with the title
// "holding" or "refused", and ends when it is ended.

#include <cstdlib>

#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
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
