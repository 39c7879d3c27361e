// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/VisibleText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isDirectional(QChar c)
{
    return (c >= u'\u202a' && c <= u'\u202e') || (c >= u'\u2066' && c <= u'\u2069');
}

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

bool needsMark(QChar c)
{
    return c.category() == QChar::Other_Control || isLineBreak(c) || isDirectional(c);
}

QString codePoint(QChar c)
{
    const QString digits = QString::number(c.unicode(), 16).toUpper().rightJustified(4, u'0');
    return u"\u27e8U+%1\u27e9"_s.arg(digits);
}

} // namespace

QString visibleText(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), needsMark)) {
        return text;
    }
    QString visible;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar c = text.at(index);
        if (c == u'\r' && index + 1 < text.size() && text.at(index + 1) == u'\n') {
            continue; // both are one line break
        }
        if (isLineBreak(c)) {
            visible += u'\u23ce';
        } else if (needsMark(c)) {
            visible += codePoint(c);
        } else {
            visible += c;
        }
    }
    return visible;
}
