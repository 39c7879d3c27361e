// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ItemFocusDelegate.h"

/// Gives every row of the result list the same height: that of an icon and two lines. The space for
/// an icon has one size for all rows. A row without an icon keeps that space free if it is an
/// application or if the next row has an icon. The width hint is 0, so that a long text is elided
/// and does not scroll the list sideways.
class ResultDelegate : public ItemFocusDelegate
{
    Q_OBJECT

public:
    explicit ResultDelegate(QObject *parent = nullptr);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
