// SPDX-License-Identifier: GPL-3.0-or-later
//
// Shows a window in front, whose title is ">" and what is typed into it. Ends when it is killed or
// its standard input closes.

#include "EndWithInput.h"

#include <string>

#include <windows.h>

namespace {

LRESULT CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second)
{
    static std::wstring typed = L">";
    if (message == WM_CHAR) {
        typed += wchar_t(first);
        SetWindowTextW(window, typed.c_str());
    }
    return DefWindowProcW(window, message, first, second);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    endWithInput();
    WNDCLASSW type{};
    type.lpfnWndProc = handle;
    type.hInstance = instance;
    type.lpszClassName = L"OtherWindow";
    RegisterClassW(&type);
    HWND window = CreateWindowExW(0, type.lpszClassName, L">", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                  400, 300, 300, 200, nullptr, nullptr, instance, nullptr);
    SetForegroundWindow(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
