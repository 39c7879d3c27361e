// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ScrollRow.h"

#include <algorithm>

void ScrollRow::setLimit(int width)
{
    if (width != m_limit) {
        m_limit = width;
        update();
    }
}

void ScrollRow::scrollTo(int offset)
{
    m_offset = offset;
    setGeometry(parentWidget()->contentsRect());
}

QSize ScrollRow::minimumSize() const
{
    return QHBoxLayout::minimumSize().boundedTo(QSize(m_limit, QWIDGETSIZE_MAX));
}

QSize ScrollRow::sizeHint() const
{
    return QHBoxLayout::sizeHint().boundedTo(QSize(m_limit, QWIDGETSIZE_MAX));
}

// QHBoxLayout lays out nothing to the left of its widget, and nothing at all if neither its
// rectangle nor an item has changed. So move the items back, let it lay them out, and shift them.
void ScrollRow::setGeometry(const QRect &rect)
{
    const int width = std::max(rect.width(), QHBoxLayout::minimumSize().width());
    moveWidgets(m_shift);
    QHBoxLayout::setGeometry(QRect(rect.x(), rect.y(), width, rect.height()));
    m_offset = std::clamp(m_offset, 0, width - rect.width());
    m_shift = m_offset;
    moveWidgets(-m_shift);
}

void ScrollRow::moveWidgets(int distance)
{
    if (distance == 0) {
        return;
    }
    for (int index = 0; index < count(); ++index) {
        if (QWidget *widget = itemAt(index)->widget()) {
            widget->move(widget->x() + distance, widget->y());
        }
    }
}
