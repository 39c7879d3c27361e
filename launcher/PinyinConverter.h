// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Spells Chinese names in Latin letters, so that they are found without an input method. Knows the
/// characters of GB 2312, each by one reading whatever the word, without tones and with ü as "v".
/// Both functions put nothing between syllables and drop what lies beyond the Basic Multilingual
/// Plane; they are pure and cannot fail.
class PinyinConverter
{
public:
    static const PinyinConverter &instance();

    /// All syllables: "QQ音乐" gives "qqyinle". Any other character stays, in lower case.
    QString toPinyin(const QString &text) const;

    /// The first letter of each syllable: "QQ音乐 2" gives "qqyl". Of the other characters, letters
    /// stay, in lower case, and all else is dropped.
    QString toPinyinInitials(const QString &text) const;
};
