// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <algorithm>

/// Whether the text has only ASCII characters, as most names do. These have no readings in pinyin,
/// and their lower case needs no Unicode table. Inline, since it runs for each name at the start.
inline bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}
