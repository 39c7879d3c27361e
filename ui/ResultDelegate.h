// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ItemFocusDelegate.h"

/// Gives every row of the result list one height, whatever it holds: that of an icon and of two
/// lines. Icons of any size take the same room; an application without one leaves it free, and so
/// does a row above one with an icon. Rows ask for no width, so that a long text is elided at the
/// edge of the list instead of scrolling it sideways.
class ResultDelegate : public ItemFocusDelegate
{
    Q_OBJECT

public:
    explicit ResultDelegate(QObject *parent = nullptr);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
