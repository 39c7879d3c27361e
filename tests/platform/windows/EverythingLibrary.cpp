// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/EverythingLibrary.h"

#include "platform/windows/Everything.h"

#include <algorithm>
#include <cstdlib>
#include <cwctype>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct State
{
    State()
    {
        // For a program that a test starts: the test cannot call the library there.
        if (const wchar_t *paths = _wgetenv(L"VASKEL_TEST_FILES")) {
            setFiles(paths);
        }
    }

    void setFiles(const std::wstring &paths)
    {
        std::wistringstream lines(paths);
        for (std::wstring line; std::getline(lines, line);) {
            files.push_back(line);
        }
    }

    std::vector<std::wstring> files;
    std::vector<std::wstring> results;
    std::wstring calls;
    std::wstring text;
    unsigned maximum = 0xffffffff;
    unsigned flags = 0;
    std::optional<unsigned> failure;
    unsigned lastError = 0;
    unsigned hiddenResult = 0xffffffff;
};

State &state()
{
    static State theOne;
    return theOne;
}

void record(const std::wstring &call)
{
    state().calls += call + L'\n';
}

std::wstring folded(std::wstring text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](wchar_t character) { return wchar_t(std::towlower(character)); });
    return text;
}

std::wstring trimmed(const std::wstring &text)
{
    const size_t first = text.find_first_not_of(L' ');
    const size_t last = text.find_last_not_of(L' ');
    return first == std::wstring::npos ? std::wstring() : text.substr(first, last - first + 1);
}

} // namespace

extern "C" {

void Everything_SetSearchW(const wchar_t *text)
{
    record(L"SetSearchW(" + std::wstring(text) + L')');
    state().text = text;
}

void Everything_SetMax(unsigned count)
{
    record(L"SetMax(" + std::to_wstring(count) + L')');
    state().maximum = count;
}

void Everything_SetRequestFlags(unsigned flags)
{
    record(L"SetRequestFlags(" + std::to_wstring(flags) + L')');
    state().flags = flags;
}

int Everything_QueryW(int wait)
{
    record(L"QueryW(" + std::to_wstring(wait) + L')');
    state().results.clear();
    state().lastError = state().failure.value_or(0);
    if (state().failure) {
        return 0;
    }
    const std::wstring text = folded(trimmed(state().text));
    for (const std::wstring &file : state().files) {
        const std::wstring name = folded(file.substr(file.find_last_of(L'\\') + 1));
        if (name.find(text) != std::wstring::npos && state().results.size() < state().maximum) {
            state().results.push_back(file);
        }
    }
    return 1;
}

unsigned Everything_GetLastError()
{
    record(L"GetLastError()");
    return state().lastError;
}

unsigned Everything_GetNumResults()
{
    record(L"GetNumResults()");
    return unsigned(state().results.size());
}

unsigned Everything_GetResultFullPathNameW(unsigned index, wchar_t *buffer, unsigned size)
{
    record(L"GetResultFullPathNameW(" + std::to_wstring(index) + L", " + std::to_wstring(size)
           + L')');
    if (index >= state().results.size() || index == state().hiddenResult || !(state().flags & 4)) {
        return 0;
    }
    const std::wstring path = state().results[index].substr(0, size - 1);
    std::copy(path.c_str(), path.c_str() + path.size() + 1, buffer);
    return unsigned(path.size());
}

void Everything_Reset()
{
    record(L"Reset()");
    state().results.clear();
    state().text.clear();
    state().lastError = 0;
}

void EverythingTest_SetFiles(const wchar_t *paths)
{
    state() = State();
    state().files.clear();
    state().setFiles(paths);
}

void EverythingTest_Fail(unsigned error)
{
    state().failure = error;
}

void EverythingTest_HideResult(unsigned index)
{
    state().hiddenResult = index;
}

const wchar_t *EverythingTest_Calls()
{
    return state().calls.c_str();
}
}
