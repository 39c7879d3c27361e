// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskKeys.h"

#include "platform/QtVersion.h"

#include <QKeyEvent>
#include <QTreeWidget>

TaskKeys::TaskKeys(QTreeWidget *tree)
    : QObject(tree)
    , m_tree(tree)
{
    tree->installEventFilter(this);
}

bool TaskKeys::eventFilter(QObject *watched, QEvent *event)
{
    // A key that the editor ignores reaches the tree.
    if (event->type() == QEvent::KeyPress && !qtversion::editorOf(*m_tree, m_tree->currentIndex())
        && handleKey(*static_cast<QKeyEvent *>(event))) {
        return true;
    }
    return QObject::eventFilter(watched, event);
}

bool TaskKeys::handleKey(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::Undo)) {
        Q_EMIT undoPressed();
        return true;
    }
    const bool isDelete = event.key() == Qt::Key_Delete;
    const bool isInsert = event.key() == Qt::Key_Insert;
    if ((!isDelete && !isInsert) || (event.modifiers() & ~Qt::KeypadModifier)) {
        return false;
    }
    // A key that is held down must not clear the list.
    if (event.isAutoRepeat()) {
        return true;
    }
    if (isDelete) {
        Q_EMIT deletePressed();
    } else {
        Q_EMIT insertPressed();
    }
    return true;
}
