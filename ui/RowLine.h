// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

class QBitArray;
class QPainter;
class QRect;

/// A line of a row: a text in one font, of which some characters have another format. It is elided
/// at its end if it does not fit.
struct RowLine
{
    QString text;
    QFont font;
    QList<QTextLayout::FormatRange> formats;

    /// Gives these characters the format; later formats override earlier ones.
    void format(const QBitArray &characters, const QTextCharFormat &format);

    bool isElided(int width) const;

    /// Paints the line in the colour of the pen, at the top of the rectangle.
    void paint(QPainter *painter, const QRect &rect, Qt::LayoutDirection direction) const;
};

/// The two lines of a row.
struct RowLines
{
    RowLine title;
    RowLine subtitle;
};
