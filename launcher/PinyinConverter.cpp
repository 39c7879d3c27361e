// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/PinyinConverter.h"

#include "launcher/Ascii.h"
#include "launcher/PinyinTable.h"

#include <QLatin1StringView>

#include <algorithm>

namespace {

char16_t lowerAscii(QChar c)
{
    return c >= u'A' && c <= u'Z' ? c.unicode() + (u'a' - u'A') : c.unicode();
}

QString asciiPinyin(const QString &text)
{
    QString result(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), result.begin(), lowerAscii);
    return result;
}

QString asciiInitials(const QString &text)
{
    QString result(text.size(), Qt::Uninitialized);
    auto end = result.begin();
    for (const QChar c : text) {
        if (const char16_t lower = lowerAscii(c); lower >= u'a' && lower <= u'z') {
            *end++ = lower;
        }
    }
    result.truncate(end - result.begin());
    return result;
}

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
    if (isAscii(text)) {
        return asciiPinyin(text);
    }
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
    if (isAscii(text)) {
        return asciiInitials(text);
    }
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
