// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: HotkeyHolder MODIFIERS KEY
//
// Holds a hotkey, both numbers as RegisterHotKey takes them. Makes a window with the title
// "holding" or "refused", and ends when it is ended, or with its standard input: it must not hold
// the hotkey any longer than a test that was killed.

#include <cstdlib>

#include <windows.h>

namespace {

DWORD WINAPI endWithInput(LPVOID)
{
    char byte = 0;
    DWORD count = 0;
    while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &count, nullptr) && count > 0) {
    }
    ExitProcess(0);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    CreateThread(nullptr, 0, endWithInput, nullptr, 0, nullptr);
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
