// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QTreeWidget>

/// The tree of the task page. Paints a row in one piece from edge to edge, and can show a text in
/// place of rows.
class TaskTree : public QTreeWidget
{
public:
    /// The role of a task's id in the data of its row.
    static constexpr int idRole = Qt::UserRole;

    /// The role of the task's completion when the row was built, which tells a toggled check mark
    /// from an edited title.
    static constexpr int completedRole = Qt::UserRole + 1;

    explicit TaskTree(QWidget *parent = nullptr);

    /// Removes all rows, and deletes them in the event loop.
    void removeRows();

    /// Expands the rows with children only: a screen reader says "expanded" for every expanded row,
    /// also for one without children.
    void expandBranches();

    /// The number of rows above the current one that the filter shows, also in collapsed branches;
    /// 0 without a current row.
    int currentRowNumber() const;

    /// The row with this number, counted likewise, or the last one if there are fewer; null if
    /// there is none.
    QTreeWidgetItem *rowAt(int number) const;

    /// The row of the task; null if there is none or the filter hides it.
    QTreeWidgetItem *visibleRow(const QString &id) const;

    /// Makes the row the current one without selecting it, and scrolls to it. Null is ignored.
    void setCurrentRow(QTreeWidgetItem *row);

    /// Sets what the tree shows in place of rows, and its accessible description; two empty texts
    /// if it has visible rows.
    void setEmptyText(const QString &title, const QString &hint);

    /// The whole line of an item if the rectangle is its visualRect(). Returns any other rectangle,
    /// such as that of a picture of the item, as it is.
    QRect lineRect(const QRect &itemRect, const QModelIndex &index) const;

    /// Paints what is behind the item of a row. TaskDelegate calls this, because only a delegate
    /// learns which row is below the mouse pointer.
    void paintLine(QPainter *painter, const QStyleOptionViewItem &option,
                   const QModelIndex &index) const;

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void paintEvent(QPaintEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;
    void drawBranches(QPainter *painter, const QRect &rect,
                      const QModelIndex &index) const override;

private:
    void paintArrow(QPainter *painter, const QStyleOptionViewItem &option,
                    const QModelIndex &index) const;
    void paintEmptyText() const;

    QString m_emptyTitle;
    QString m_emptyHint;
};
