// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ItemFocusDelegate.h"

class TaskTree;

/// Paints the rows of the task page from edge to edge, and places the editor of a title in its row.
/// A title that does not fit has a tool tip.
class TaskDelegate : public ItemFocusDelegate
{
    Q_OBJECT

public:
    /// The tree becomes the parent.
    explicit TaskDelegate(TaskTree *tree);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    void commitAndClose(QWidget *editor);

    TaskTree *m_tree;
};
