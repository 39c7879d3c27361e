// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

/// What reader.exe and readerhook.dll have agreed upon.
namespace reader {

/// The message that the program's thread is asked with; its first parameter is a Question.
constexpr const wchar_t *messageName = L"VaskelReader";
enum Question { Windows, Counts };
/// The memory that the answer is put into: the elements of a JSON array of windows, or an object
/// with the counts of what the process holds of the system.
constexpr const wchar_t *mappingName = L"VaskelReader";
constexpr size_t mappingSize = 4 << 20;

} // namespace reader
