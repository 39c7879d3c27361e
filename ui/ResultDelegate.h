// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ItemFocusDelegate.h"

/// Gives every row of the result list one height, whatever it holds: that of an icon and of two
/// lines, Latin or Chinese. Icons of any size take the same room, and an application without one
/// leaves it free. Rows ask for no width, so that a
/// long text is elided at the edge of the list instead of scrolling it sideways.
class ResultDelegate : public ItemFocusDelegate
{
    Q_OBJECT

public:
    explicit ResultDelegate(QObject *parent = nullptr);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
