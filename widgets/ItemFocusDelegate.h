// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

/// The base of the row delegates: draws rows as QStyledItemDelegate does, and an outline around the
/// current row while the keyboard has led to its view. The style sheet takes away the outline that
/// views draw themselves, and hides from the style below it which row has the focus, so each view
/// needs a delegate for this.
class ItemFocusDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit ItemFocusDelegate(QObject *parent = nullptr);

    /// Whether a current row that is not selected is outlined after a mouse click, too, because
    /// nothing else would show where the keyboard is. Off at first.
    void setOutlinesUnselected(bool enabled) { m_outlinesUnselected = enabled; }

    /// The distance in pixels from the edges of the row to the outline; 2 at first.
    void setOutlineMargin(int pixels) { m_outlineMargin = pixels; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    bool isOutlined(QStyle::State state) const;

    bool m_outlinesUnselected = false;
    int m_outlineMargin = 2;
};
