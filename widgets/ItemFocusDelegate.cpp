// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ItemFocusDelegate.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

using namespace Qt::StringLiterals;

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

void ItemFocusDelegate::showToolTip(const QHelpEvent &event, QWidget *view,
                                    const QStringList &lines)
{
    // Rich text, since a plain one is not wrapped.
    const QString text = "<p style='margin:0; white-space:pre-wrap'>"_L1
                         + lines.join(u'\n').toHtmlEscaped().replace(u'\n', "<br>"_L1) + "</p>"_L1;
    QToolTip::showText(event.globalPos(), text, view);
}

bool ItemFocusDelegate::isOutlined(QStyle::State state) const
{
    if (!state.testFlag(QStyle::State_HasFocus)) {
        return false;
    }
    return state.testFlag(QStyle::State_KeyboardFocusChange)
           || (m_outlinesUnselected && !state.testFlag(QStyle::State_Selected));
}
