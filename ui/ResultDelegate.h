// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ItemFocusDelegate.h"

#include <QStringList>
#include <QVariantMap>

struct RowLines;

/// Paints the rows of the result list: the icon, the title with the matched characters emphasised,
/// and the subtitle, smaller and in the secondary colour. A line that does not fit is elided, and
/// the row then has a tool tip.
///
/// Every row has the same height: that of an icon and two lines. The space for an icon has one size
/// for all rows. A row without an icon keeps that space free if it is a program or if the next
/// row has an icon. The width hint is 0, so that a long text is elided and does not scroll the list
/// sideways.
class ResultDelegate : public ItemFocusDelegate
{
    Q_OBJECT

public:
    static constexpr int digitCount = 9;

    explicit ResultDelegate(QObject *parent = nullptr);

    /// Sets the texts by which the rows of programs and files were found. The caller repaints.
    void setSearchTexts(const QStringList &texts) { m_searchTexts = texts; }

    /// Sets the row that shows the digit 1; the next eight show 2 to 9. With a negative row, the
    /// default, no row shows a digit. The caller repaints.
    void setFirstDigitRow(int row) { m_firstDigitRow = row; }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    int digitOf(const QModelIndex &index) const;
    RowLines linesOf(const QStyleOptionViewItem &item, const QVariantMap &record) const;
    QRect textRect(const QStyleOptionViewItem &item, const QModelIndex &index) const;

    const QString m_startMenu; // begins the subtitle of each start-menu program
    QStringList m_searchTexts;
    int m_firstDigitRow = -1;
};
