// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ItemFocusDelegate.h"

#include <QPainter>

ItemFocusDelegate::ItemFocusDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

void ItemFocusDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    constexpr QStyle::State focused = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
    if ((option.state & focused) != focused) {
        return;
    }
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawRoundedRect(QRectF(option.rect).adjusted(2.5, 2.5, -2.5, -2.5), 6, 6);
    painter->restore();
}
