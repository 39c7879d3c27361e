// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

/// Draws rows as ever, and an outline around the current one as long as the keyboard has led to its
/// view. The style sheet takes away the outline that views draw themselves.
class ItemFocusDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit ItemFocusDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
