// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskDelegate.h"

#include "tasks/TaskTree.h"
#include "widgets/InputMethodKeys.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyle>

namespace {

// How far the editor reaches beyond the text of the row, so that its frame does not touch the text.
constexpr int editorMargin = 2;
// The style sheet pads line edits so far that the title would move to the right.
constexpr int leftPadding = -8;
// The editor adds both paddings to its minimum width, which must not be negative.
constexpr int rightPadding = 4;

bool isEnter(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

} // namespace

TaskDelegate::TaskDelegate(TaskTree *tree)
    : ItemFocusDelegate(tree)
    , m_tree(tree)
{
    setOutlinesUnselected(true);
    setOutlineMargin(1);
}

void TaskDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem line = option;
    line.rect = m_tree->lineRect(option.rect, index);
    m_tree->paintLine(painter, line, index);
    QStyledItemDelegate::paint(painter, option, index);
    paintOutline(painter, line);
}

QWidget *TaskDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    QWidget *editor = ItemFocusDelegate::createEditor(parent, option, index);
    if (auto *edit = qobject_cast<QLineEdit *>(editor)) {
        edit->setTextMargins(leftPadding, 0, rightPadding, 0);
        new InputMethodKeys(edit);
    }
    return editor;
}

void TaskDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    // With this, the rectangle is all the room beside the check box, not only that of the title.
    item.showDecorationSelected = true;
    QRect rect = m_tree->style()->subElementRect(QStyle::SE_ItemViewItemText, &item, m_tree);
    rect.adjust(-editorMargin, 0, editorMargin, 0);
    const int height = qMin(option.rect.height(), editor->minimumSizeHint().height());
    rect.setTop(option.rect.top() + (option.rect.height() - height) / 2);
    rect.setHeight(height);
    editor->setGeometry(rect);
}

// The base class takes Enter, Tab and Escape before the editor's own filters.
bool TaskDelegate::eventFilter(QObject *watched, QEvent *event)
{
    const auto *keys = watched->findChild<InputMethodKeys *>();
    const bool isKey =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (isKey && keys && keys->isComposing()) {
        return false;
    }
    if (event->type() == QEvent::KeyPress && isEnter(*static_cast<QKeyEvent *>(event))) {
        commitAndClose(qobject_cast<QWidget *>(watched));
        return true;
    }
    return ItemFocusDelegate::eventFilter(watched, event);
}

// The base class does this for Enter, but only in the event loop. Something else may have closed
// the editor by then, such as a second Enter or a rebuild of the rows.
void TaskDelegate::commitAndClose(QWidget *editor)
{
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor, SubmitModelCache);
}

bool TaskDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                             const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() == QEvent::ToolTip && index.isValid()
        && sizeHint(option, index).width() > option.rect.width()) {
        showToolTip(*event, view, {index.data().toString()});
        return true;
    }
    return ItemFocusDelegate::helpEvent(event, view, option, index);
}
