// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

/// The only reading of a Chinese character: lower-case ASCII, at most six letters.
struct PinyinReading
{
    char16_t character;
    char syllable[7];
};

/// The size of GB 2312: 3,755 characters of level 1 and 3,008 of level 2.
inline constexpr std::size_t pinyinReadingCount = 6763;

/// The readings, sorted by character. scripts/generate-pinyin-table writes them.
extern const std::array<PinyinReading, pinyinReadingCount> pinyinReadings;
