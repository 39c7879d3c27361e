// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultDelegate.h"

#include "ui/ResultRecord.h"

#include <QApplication>
#include <QStyle>

using namespace Qt::StringLiterals;

ResultDelegate::ResultDelegate(QObject *parent)
    : ItemFocusDelegate(parent)
{
}

QSize ResultDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    // The font of the Chinese glyphs is often taller than that of the Latin ones.
    item.text = u"Åg\u4E2D\u2028Åg\u4E2D"_s;
    item.features |= QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration;
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    return {0,
            style->sizeFromContents(QStyle::CT_ItemViewItem, &item, QSize(), item.widget).height()};
}

void ResultDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    // The base class narrows the place to the icon at hand, which would leave the texts ragged.
    const QSize iconPlace = option->decorationSize;
    QStyledItemDelegate::initStyleOption(option, index);
    option->decorationSize = iconPlace;
    if (!recordPath(index.data(Qt::UserRole).toMap()).isEmpty()) {
        option->features |= QStyleOptionViewItem::HasDecoration;
    }
}
