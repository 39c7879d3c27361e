// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

/// The interface between reader.exe and readerhook.dll.
namespace reader {

/// The message with a question for the program's thread; its first parameter is a Question.
constexpr const wchar_t *messageName = L"VaskelReader";
enum Question { Windows, Counts };
/// The shared memory for the answer: the elements of a JSON array of windows, or an object with the
/// counts of system resources.
constexpr const wchar_t *mappingName = L"VaskelReader";
constexpr size_t mappingSize = 4 << 20;

} // namespace reader
