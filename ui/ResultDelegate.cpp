// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultDelegate.h"

#include "core/ResultRecord.h"

#include <QApplication>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {

bool nextRowHasIcon(const QModelIndex &index)
{
    return index.siblingAtRow(index.row() + 1).data(Qt::DecorationRole).isValid();
}

} // namespace

ResultDelegate::ResultDelegate(QObject *parent)
    : ItemFocusDelegate(parent)
{
}

QSize ResultDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    // Measure Latin letters only. Chinese ones may be taller, but the padding of the style sheet
    // suffices for them, and measuring one would load its font at every start.
    item.text = u"Åg\u2028Åg"_s;
    item.features |= QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration;
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    return {0,
            style->sizeFromContents(QStyle::CT_ItemViewItem, &item, QSize(), item.widget).height()};
}

void ResultDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    // The base class shrinks this size to that of the icon, so the texts would not line up.
    const QSize decorationSize = option->decorationSize;
    QStyledItemDelegate::initStyleOption(option, index);
    option->decorationSize = decorationSize;
    if (!recordPath(index.data(Qt::UserRole).toMap()).isEmpty() || nextRowHasIcon(index)) {
        option->features |= QStyleOptionViewItem::HasDecoration;
    }
}
