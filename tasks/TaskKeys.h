// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QKeyEvent;
class QTreeWidget;

/// The keys of the task page's tree. While the editor of a title is open, they belong to it.
class TaskKeys : public QObject
{
    Q_OBJECT

public:
    /// The tree becomes the parent.
    explicit TaskKeys(QTreeWidget *tree);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void deletePressed();
    void insertPressed();
    /// QKeySequence::Undo, which is Ctrl+Z on most systems.
    void undoPressed();

private:
    bool handleKey(const QKeyEvent &event);

    QTreeWidget *m_tree;
};
