// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHBoxLayout>
#include <QWidget>

/// A QHBoxLayout that limits the width that it asks for. If its items need more, they keep their
/// widths, and the widget shows a part of the row.
class ScrollRow : public QHBoxLayout
{
public:
    using QHBoxLayout::QHBoxLayout;

    /// The largest width that the row asks for, in pixels; none at first.
    int limit() const { return m_limit; }
    void setLimit(int width);

    /// The width of the items in front of the part that shows.
    int offset() const { return m_offset; }

    /// Shows the part that begins at this offset, or at the nearest possible one.
    void scrollTo(int offset);

    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect &rect) override;

private:
    void moveWidgets(int distance);

    int m_limit = QWIDGETSIZE_MAX;
    int m_offset = 0;
    int m_shift = 0; // how far the widgets were moved to the left of their places
};
