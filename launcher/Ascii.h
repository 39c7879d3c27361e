// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <algorithm>

/// Whether each character is of ASCII, as in most names. Such characters have no readings in
/// pinyin, and their case needs no table of Unicode. Inline, since it runs for each name of a
/// start.
inline bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}
