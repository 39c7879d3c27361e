// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: reader DESKTOP
//
// Reports what a user sees of Vaskel.exe on that desktop of wine. Each line of the standard input
// is a question, each answer one line of JSON:
//
//   windows    the visible windows with their accessibility tree
//   active     whether the program's window has the keyboard focus
//   counts     the number of handles, GDI and user objects of the program
//   processes  the processes of that program
//   taskbar    the geometry of the inside of the bar or window with the system tray
//   clipboard  the text in the clipboard
//   colors     tells all programs that the user's choice of colours has changed

#include "reader.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include <windows.h>

#include <tlhelp32.h>

namespace {

constexpr UINT patience = 20000;

std::vector<DWORD> processes()
{
    std::vector<DWORD> found;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more;
         more = Process32NextW(snapshot, &entry)) {
        if (_wcsicmp(entry.szExeFile, L"Vaskel.exe") == 0) {
            found.push_back(entry.th32ProcessID);
        }
    }
    CloseHandle(snapshot);
    return found;
}

std::string answerProcesses()
{
    std::string result;
    for (const DWORD id : processes()) {
        result += result.empty() ? "[" : ",";
        result += std::to_string(id);
    }
    return result.empty() ? "[]" : result + "]";
}

/// Qt's windows of the program's processes, including hidden ones.
std::vector<HWND> windows()
{
    std::vector<HWND> found;
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            wchar_t className[256];
            GetClassNameW(window, className, 256);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            for (const DWORD process : processes()) {
                if (process == owner && std::wcsncmp(className, L"Qt", 2) == 0) {
                    reinterpret_cast<std::vector<HWND> *>(parameter)->push_back(window);
                }
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

bool isActive()
{
    HWND active = GetForegroundWindow();
    wchar_t className[256] = {};
    GetClassNameW(active, className, 256);
    const std::vector<HWND> own = windows();
    // Qt's class name for a normal window, not a tool window or a menu.
    return IsWindowVisible(active) && std::wcsstr(className, L"QWindowIcon")
           && std::find(own.begin(), own.end(), active) != own.end();
}

/// The answer of the program's own thread; empty if it does not answer.
std::string ask(HMODULE hookLibrary, char *memory, reader::Question question)
{
    *memory = 0;
    const std::vector<HWND> found = windows();
    if (!found.empty()) {
        const auto procedure = reinterpret_cast<HOOKPROC>(
            reinterpret_cast<void *>(GetProcAddress(hookLibrary, "readerHook")));
        HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, procedure, hookLibrary,
                                       GetWindowThreadProcessId(found.front(), nullptr));
        DWORD_PTR answered = 0;
        SendMessageTimeoutW(found.front(), RegisterWindowMessageW(reader::messageName), question, 0,
                            SMTO_NORMAL, patience, &answered);
        UnhookWindowsHookEx(hook);
    }
    return memory;
}

std::string answerTaskbar()
{
    HWND bar = FindWindowW(L"Shell_TrayWnd", nullptr);
    RECT place{};
    if (!bar || !IsWindowVisible(bar) || !GetClientRect(bar, &place)) {
        return "null";
    }
    MapWindowPoints(bar, nullptr, reinterpret_cast<POINT *>(&place), 2);
    char text[100];
    std::snprintf(text, sizeof text, "[%ld,%ld,%ld,%ld]", place.left, place.top,
                  place.right - place.left, place.bottom - place.top);
    return text;
}

/// The text as numbers of its UTF-16 code units, which need no quotes.
std::string answerClipboard()
{
    std::string result;
    if (!OpenClipboard(nullptr)) {
        return "null";
    }
    if (HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        for (const auto *unit = static_cast<const wchar_t *>(GlobalLock(data)); unit && *unit;
             ++unit) {
            result += result.empty() ? "[" : ",";
            result += std::to_string(unsigned(*unit));
        }
        GlobalUnlock(data);
    }
    CloseClipboard();
    return result.empty() ? "[]" : result + "]";
}

/// Windows sends the same after the user has changed the registry's value in its settings.
bool tellOfColors()
{
    return SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0,
                               reinterpret_cast<LPARAM>(L"ImmersiveColorSet"), SMTO_NORMAL,
                               patience, nullptr);
}

} // namespace

int main(int argc, char *argv[])
{
    HDESK desktop = argc > 1 ? OpenDesktopA(argv[1], 0, FALSE, GENERIC_ALL) : nullptr;
    if (!desktop || !SetThreadDesktop(desktop)) {
        std::fputs("reader: there is no such desktop\n", stderr);
        return 2;
    }
    HANDLE mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                        DWORD(reader::mappingSize), reader::mappingName);
    auto *memory =
        static_cast<char *>(MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, reader::mappingSize));
    HMODULE hookLibrary = LoadLibraryW(L"readerhook.dll");
    if (!memory || !hookLibrary) {
        std::fputs("reader: readerhook.dll is not beside it\n", stderr);
        return 2;
    }
    char line[100];
    while (std::fgets(line, sizeof line, stdin)) {
        const std::string question(line, std::strcspn(line, "\r\n"));
        std::string answer = "null";
        if (question == "windows") {
            answer = '[' + ask(hookLibrary, memory, reader::Windows) + ']';
        } else if (question == "counts") {
            answer = ask(hookLibrary, memory, reader::Counts);
        } else if (question == "active") {
            answer = isActive() ? "true" : "false";
        } else if (question == "processes") {
            answer = answerProcesses();
        } else if (question == "taskbar") {
            answer = answerTaskbar();
        } else if (question == "clipboard") {
            answer = answerClipboard();
        } else if (question == "colors") {
            answer = tellOfColors() ? "true" : "false";
        }
        std::puts(answer.empty() ? "null" : answer.c_str());
        std::fflush(stdout);
    }
    return 0;
}
