// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

/// The base of the row delegates. Outlines the current row if the focus came by keyboard. The style
/// sheet suppresses the focus frame of views, and the style below it cannot tell the current row,
/// so each view needs this delegate.
class ItemFocusDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit ItemFocusDelegate(QObject *parent = nullptr);

    /// Whether to outline a current row that is not selected even after a mouse click, since
    /// nothing else shows it. Off by default.
    void setOutlinesUnselected(bool enabled) { m_outlinesUnselected = enabled; }

    /// Sets the distance in pixels between the edges of the row and the outline; 2 by default.
    void setOutlineMargin(int pixels) { m_outlineMargin = pixels; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    /// Paints the outline if the state of the row requires it. For a paint() that does not call the
    /// one of this class.
    void paintOutline(QPainter *painter, const QStyleOptionViewItem &option) const;

    /// Shows the full lines of an elided row in a tool tip, wrapped, and without reading markup in
    /// them. For a helpEvent().
    static void showToolTip(const QHelpEvent &event, QWidget *view, const QStringList &lines);

private:
    bool isOutlined(QStyle::State state) const;

    bool m_outlinesUnselected = false;
    int m_outlineMargin = 2;
};
