// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/PinyinConverter.h"

#include "launcher/PinyinTable.h"

#include <QLatin1StringView>

#include <algorithm>

namespace {

// Empty for a character without a reading.
QLatin1StringView syllableOf(QChar c)
{
    const auto reading = std::lower_bound(
        pinyinReadings.begin(), pinyinReadings.end(), c.unicode(),
        [](const PinyinReading &entry, char16_t code) { return entry.character < code; });
    return reading != pinyinReadings.end() && reading->character == c
               ? QLatin1StringView(reading->syllable)
               : QLatin1StringView();
}

} // namespace

const PinyinConverter &PinyinConverter::instance()
{
    static const PinyinConverter converter;
    return converter;
}

QString PinyinConverter::toPinyin(const QString &text) const
{
    QString result;
    result.reserve(4 * text.size());
    for (const QChar c : text) {
        if (c.isSurrogate()) {
            continue;
        }
        if (const QLatin1StringView syllable = syllableOf(c); !syllable.isEmpty()) {
            result += syllable;
        } else {
            result += c.toLower();
        }
    }
    return result;
}

QString PinyinConverter::toPinyinInitials(const QString &text) const
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (c.isSurrogate()) {
            continue;
        }
        if (const QLatin1StringView syllable = syllableOf(c); !syllable.isEmpty()) {
            result += syllable.front();
        } else if (c.isLetter()) {
            result += c.toLower();
        }
    }
    return result;
}
