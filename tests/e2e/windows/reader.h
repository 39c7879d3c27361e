// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

/// What reader.exe and readerhook.dll have agreed upon.
namespace reader {

/// The message that the program's thread is asked with.
constexpr const wchar_t *messageName = L"VaskelReader";
/// The memory that the answer is put into: the windows, as the elements of a JSON array.
constexpr const wchar_t *mappingName = L"VaskelReader";
constexpr size_t mappingSize = 4 << 20;

} // namespace reader
