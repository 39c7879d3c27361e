// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppSearch.h"

#include "launcher/AppEntry.h"
#include "launcher/PinyinConverter.h"

namespace {

QString comparable(const QString &query)
{
    return query.trimmed().toLower();
}

bool contains(const QString &text, const QString &query)
{
    return text.indexOf(query, 0, Qt::CaseSensitive) != -1;
}

bool matches(const AppEntry &app, const QString &query)
{
    return contains(app.lowerName, query) || contains(app.lowerDescription, query)
           || contains(app.pinyin, query) || contains(app.pinyinInitials, query);
}

/// A text that a search compares. Each of its characters comes from one of the name, as all
/// conversions are made character by character.
struct ComparedText
{
    QString text;
    QList<qsizetype> origins; ///< the index in the name, for each character

    void append(const QString &part, qsizetype origin)
    {
        text += part;
        origins.resize(text.size(), origin);
    }
};

bool isSurrogatePair(const QString &text, qsizetype index)
{
    return text.at(index).isHighSurrogate() && index + 1 < text.size()
           && text.at(index + 1).isLowSurrogate();
}

ComparedText lowerCase(const QString &name)
{
    ComparedText lower;
    qsizetype index = 0;
    while (index < name.size()) {
        const qsizetype length = isSurrogatePair(name, index) ? 2 : 1;
        lower.append(name.mid(index, length).toLower(), index);
        index += length;
    }
    return lower;
}

using Conversion = QString (PinyinConverter::*)(const QString &) const;

ComparedText transliteration(const QString &name, Conversion conversion)
{
    ComparedText latin;
    for (qsizetype index = 0; index < name.size(); ++index) {
        latin.append((PinyinConverter::instance().*conversion)(name.mid(index, 1)), index);
    }
    return latin;
}

// Marks the characters that the query hits; returns whether there are any.
bool mark(QBitArray &marks, const QString &name, const ComparedText &compared, const QString &query)
{
    const qsizetype begin = compared.text.indexOf(query, 0, Qt::CaseSensitive);
    if (begin < 0) {
        return false;
    }
    for (qsizetype index = begin; index < begin + query.size(); ++index) {
        const qsizetype origin = compared.origins.at(index);
        marks.fill(true, origin, origin + (isSurrogatePair(name, origin) ? 2 : 1));
    }
    return true;
}

} // namespace

QVariantList searchApps(const QList<AppEntry> &apps, const QString &query)
{
    const QString lowerQuery = comparable(query);
    QVariantList records;
    for (const AppEntry &app : apps) {
        if (lowerQuery.isEmpty() || matches(app, lowerQuery)) {
            records.append(app.record);
        }
    }
    return records;
}

QBitArray matchInName(const QString &name, const QString &query)
{
    const QString lowerQuery = comparable(query);
    QBitArray marks(name.size());
    if (!lowerQuery.isEmpty() && !mark(marks, name, lowerCase(name), lowerQuery)
        && !mark(marks, name, transliteration(name, &PinyinConverter::toPinyin), lowerQuery)) {
        mark(marks, name, transliteration(name, &PinyinConverter::toPinyinInitials), lowerQuery);
    }
    return marks;
}

QBitArray matchInText(const QString &text, const QString &query)
{
    const QString lowerQuery = comparable(query);
    QBitArray marks(text.size());
    if (!lowerQuery.isEmpty()) {
        mark(marks, text, lowerCase(text), lowerQuery);
    }
    return marks;
}
