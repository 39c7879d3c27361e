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
    paintOutline(painter, option);
}

void ItemFocusDelegate::paintOutline(QPainter *painter, const QStyleOptionViewItem &option) const
{
    if (!isOutlined(option.state)) {
        return;
    }
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const qreal inset = m_outlineMargin + 0.5; // the pen is one pixel wide
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawRoundedRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset), 6, 6);
    painter->restore();
}

bool ItemFocusDelegate::isOutlined(QStyle::State state) const
{
    if (!state.testFlag(QStyle::State_HasFocus)) {
        return false;
    }
    return state.testFlag(QStyle::State_KeyboardFocusChange)
           || (m_outlinesUnselected && !state.testFlag(QStyle::State_Selected));
}
