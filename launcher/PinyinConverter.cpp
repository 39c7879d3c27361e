// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/PinyinConverter.h"

#include "launcher/PinyinTable.h"

#include <QHash>
#include <QSet>

namespace {

QHash<quint32, QString> makePinyinTable()
{
    QHash<quint32, QString> table;
    table.reserve(pinyinReadings.size());
    // Only 400 syllables are different, so that most entries can share their text.
    QSet<QString> syllables;
    for (const PinyinReading &reading : pinyinReadings) {
        table.insert(reading.character, *syllables.insert(QString::fromLatin1(reading.syllable)));
    }
    return table;
}

// Null for a character without a reading. Only a name that may need it pays for the table, which
// takes longer to make than the names of all the programs to spell.
const QString *syllableOf(QChar c)
{
    if (c < pinyinReadings.front().character || c > pinyinReadings.back().character) {
        return nullptr;
    }
    static const QHash<quint32, QString> pinyinTable = makePinyinTable();
    const auto entry = pinyinTable.constFind(c.unicode());
    return entry != pinyinTable.cend() ? &*entry : nullptr;
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
        if (const QString *syllable = syllableOf(c)) {
            result += *syllable;
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
        if (const QString *syllable = syllableOf(c)) {
            result += syllable->front();
        } else if (c.isLetter()) {
            result += c.toLower();
        }
    }
    return result;
}
