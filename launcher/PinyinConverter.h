// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Converts Chinese names to Latin letters, so that they can be searched without an input method.
/// It knows the characters of GB 2312, with one reading each, without tones and with ü as "v".
/// Syllables are not separated; characters beyond the Basic Multilingual Plane are dropped.
class PinyinConverter
{
public:
    static const PinyinConverter &instance();

    /// All syllables: "QQ音乐" gives "qqyinle". Other characters are kept, in lower case.
    QString toPinyin(const QString &text) const;

    /// The first letter of each syllable: "QQ音乐 2" gives "qqyl". Other letters are kept, in lower
    /// case; other characters are dropped.
    QString toPinyinInitials(const QString &text) const;
};
