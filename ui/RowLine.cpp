// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RowLine.h"

#include <QBitArray>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

// Returns the width of the text.
qreal layOut(QTextLayout &layout, const RowLine &line, int width, Qt::LayoutDirection direction)
{
    QTextOption option(QStyle::visualAlignment(direction, Qt::AlignLeft));
    option.setTextDirection(direction);
    option.setWrapMode(QTextOption::NoWrap);
    layout.setFont(line.font);
    layout.setText(line.text);
    layout.setFormats(line.formats);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine textLine = layout.createLine();
    if (textLine.isValid()) {
        textLine.setLineWidth(width);
    }
    layout.endLayout();
    return textLine.isValid() ? textLine.naturalTextWidth() : 0;
}

RowLine elided(const RowLine &line, qreal width)
{
    RowLine shown = line;
    shown.text = QFontMetricsF(line.font).elidedText(line.text, Qt::ElideRight, width);
    const int end = std::max(static_cast<int>(shown.text.size()) - 1, 0); // the ellipsis
    for (QTextLayout::FormatRange &range : shown.formats) {
        range.start = std::min(range.start, end);
        range.length = std::min(range.length, end - range.start);
    }
    return shown;
}

} // namespace

void RowLine::format(const QBitArray &characters, const QTextCharFormat &format)
{
    const auto size = static_cast<int>(characters.size());
    int index = 0;
    while (index < size) {
        const int begin = index;
        while (index < size && characters.testBit(index)) {
            ++index;
        }
        if (index > begin) {
            formats.append({begin, index - begin, format});
        } else {
            ++index;
        }
    }
}

bool RowLine::isElided(int width) const
{
    QTextLayout layout;
    return layOut(layout, *this, width, Qt::LeftToRight) > width;
}

void RowLine::paint(QPainter *painter, const QRect &rect, Qt::LayoutDirection direction) const
{
    QTextLayout layout;
    qreal excess = layOut(layout, *this, rect.width(), direction) - rect.width();
    // Bold characters are wider than the metrics of the font say, so this may take several rounds.
    qreal width = rect.width();
    while (excess > 0 && width > 0) {
        excess = layOut(layout, elided(*this, width), rect.width(), direction) - rect.width();
        width -= std::max(excess, 1.0);
    }
    layout.draw(painter, rect.topLeft());
}
