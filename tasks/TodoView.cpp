// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TodoView.h"

#include "platform/QtVersion.h"
#include "tasks/PaletteWatcher.h"
#include "tasks/TaskDelegate.h"
#include "tasks/TaskKeys.h"
#include "tasks/TaskService.h"
#include "tasks/TaskTree.h"
#include "widgets/AccessibleName.h"
#include "widgets/Announcement.h"
#include "widgets/InputMethodKeys.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Stored as the item data of the filter's entries.
enum class TaskStatusFilter {
    Active,
    All,
    Completed,
};

// QTreeView lays out rows recursively. The service limits the levels, but a file edited by hand
// could exhaust the stack.
constexpr int deepestShownLevel = 500;

bool matchesFilter(int filter, bool completed)
{
    switch (TaskStatusFilter(filter)) {
    case TaskStatusFilter::Active:
        return !completed;
    case TaskStatusFilter::All:
        return true;
    case TaskStatusFilter::Completed:
        return completed;
    }
    return false;
}

} // namespace

TodoView::TodoView(TaskService *service, QWidget *parent)
    : QWidget(parent)
    , m_service(service)
    , m_deleted(service)
{
    setObjectName(u"todoView"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 16, 18, 18);
    layout->setSpacing(10);
    layout->addLayout(buildHeading());
    layout->addLayout(buildEntry());
    layout->addLayout(buildFilter());
    buildTree();
    layout->addWidget(m_tree, 1);

    connectWidgets();
    activate();
}

TodoView::~TodoView() = default;

void TodoView::activate()
{
    refresh();
    m_input->setFocus(Qt::OtherFocusReason);
    // A new page enters its window after this call and can take the focus only then.
    const auto takeFocus = [this] {
        if (m_input->isVisible()) {
            m_input->setFocus(Qt::OtherFocusReason);
        }
    };
    QMetaObject::invokeMethod(m_input, takeFocus, Qt::QueuedConnection);
}

void TodoView::showTask(const QString &id)
{
    refresh();
    m_tree->setCurrentRow(m_tree->visibleRow(id));
}

QBoxLayout *TodoView::buildHeading()
{
    auto *title = new QLabel(tr("Todo"), this);
    title->setObjectName(u"pageTitle"_s);
    auto *backButton = new QPushButton(tr("Back"), this);
    backButton->setObjectName(u"todoBackButton"_s);
    connect(backButton, &QPushButton::clicked, this, &TodoView::closeRequested);

    auto *row = new QHBoxLayout;
    row->addWidget(title);
    row->addStretch();
    row->addWidget(backButton);
    return row;
}

QBoxLayout *TodoView::buildEntry()
{
    m_input = new QLineEdit(this);
    m_input->setObjectName(u"todoInput"_s);
    m_input->setPlaceholderText(tr("Add a task and press Enter"));
    m_input->setAccessibleName(m_input->placeholderText());
    new InputMethodKeys(m_input);
    m_addButton = new QPushButton(tr("Add"), this);
    m_addButton->setObjectName(u"primary"_s);

    auto *row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(m_input, 1);
    row->addWidget(m_addButton);
    return row;
}

QBoxLayout *TodoView::buildFilter()
{
    m_filter = new QComboBox(this);
    m_filter->addItem(tr("Active"), int(TaskStatusFilter::Active));
    m_filter->addItem(tr("All"), int(TaskStatusFilter::All));
    m_filter->addItem(tr("Completed"), int(TaskStatusFilter::Completed));
    setAccessibleNames(m_filter,
                       QStringList{tr("Active"), tr("All"), tr("Completed")}.join(u" / "_s));
    m_summary = new QLabel(this);
    m_summary->setObjectName(u"muted"_s);

    auto *row = new QHBoxLayout;
    row->addWidget(m_filter);
    row->addStretch();
    row->addWidget(m_summary);
    return row;
}

void TodoView::buildTree()
{
    m_tree = new TaskTree(this);
    m_tree->setObjectName(u"todoTree"_s);
    setAccessibleNames(m_tree, tr("Todo"));
    m_tree->setItemDelegate(new TaskDelegate(m_tree));
}

void TodoView::connectWidgets()
{
    connect(m_addButton, &QPushButton::clicked, this, &TodoView::addTaskFromInput);
    connect(m_input, &QLineEdit::returnPressed, this, &TodoView::addTaskFromInput);
    connect(m_filter, &QComboBox::currentIndexChanged, this, &TodoView::refresh);
    connect(m_tree, &QTreeWidget::itemChanged, this, &TodoView::onItemChanged);
    connect(m_tree, &QTreeWidget::customContextMenuRequested, this, &TodoView::showContextMenu);
    const auto *keys = new TaskKeys(m_tree);
    connect(keys, &TaskKeys::deletePressed, this, &TodoView::deleteCurrentTask);
    connect(keys, &TaskKeys::insertPressed, this, [this] { m_tree->setCurrentRow(addSubtask()); });
    connect(keys, &TaskKeys::undoPressed, this, &TodoView::restoreDeletedTask);
    // The style sheet sets the palette when the page is shown, and may change at any time.
    connect(new PaletteWatcher(this), &PaletteWatcher::paletteChanged, this,
            &TodoView::recolorRows);
}

void TodoView::refresh()
{
    // Moving the focus commits an open editor; destroying it would hand the focus to the next
    // widget.
    if (m_tree->isAncestorOf(QApplication::focusWidget())) {
        m_tree->setFocus();
    }

    m_isRefreshing = true;
    m_tree->removeRows();
    const TaskGroups groups = m_service->repository()->childrenByParent();
    m_tree->addTopLevelItems(buildChildren(groups, QString(), 1));
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        applyFilter(m_tree->topLevelItem(i));
    }
    m_tree->expandBranches();
    m_tree->scrollToTop();
    m_isRefreshing = false;
    updateSummary();
    updateEmptyText();
}

void TodoView::refreshAfterAction()
{
    const int number = m_tree->currentRowNumber();
    refresh();
    // Keys act on the current row, so set it without selecting it. Ask the window: a closing menu
    // may still have the application's focus.
    if (window()->focusWidget() == m_tree) {
        m_tree->setCurrentRow(m_tree->rowAt(number));
    }
}

// A mouse press elsewhere ends the edit with NoHint before the tree gets it. Keep the rows until
// the release, so that press and release find the same row.
void TodoView::refreshAfterEdit(QWidget *, QAbstractItemDelegate::EndEditHint hint)
{
    if (hint == QAbstractItemDelegate::NoHint && QGuiApplication::mouseButtons() != Qt::NoButton) {
        QCoreApplication::instance()->installEventFilter(this);
    } else {
        refreshAfterAction();
    }
}

bool TodoView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        QCoreApplication::instance()->removeEventFilter(this);
        QMetaObject::invokeMethod(this, &TodoView::refreshAfterAction, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

QList<QTreeWidgetItem *> TodoView::buildChildren(const TaskGroups &groups, const QString &parentId,
                                                 int level) const
{
    QList<QTreeWidgetItem *> rows;
    if (level > deepestShownLevel) {
        return rows;
    }
    const QList<const Task *> tasks = groups.value(parentId);
    for (const Task *task : tasks) {
        QTreeWidgetItem *row = buildRow(*task);
        row->addChildren(buildChildren(groups, task->id, level + 1));
        rows.append(row);
    }
    return rows;
}

QTreeWidgetItem *TodoView::buildRow(const Task &task) const
{
    auto *row = new QTreeWidgetItem;
    row->setText(0, task.title);
    row->setData(0, TaskTree::idRole, task.id);
    row->setData(0, TaskTree::completedRole, task.completed);
    row->setCheckState(0, task.completed ? Qt::Checked : Qt::Unchecked);
    // Some screen readers do not say the check state of a row.
    row->setData(0, Qt::AccessibleDescriptionRole, task.completed ? tr("Completed") : tr("Active"));
    row->setFlags(row->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
    colorRow(*row);
    return row;
}

void TodoView::colorRow(QTreeWidgetItem &row) const
{
    if (row.data(0, TaskTree::completedRole).toBool()) {
        row.setForeground(0, palette().brush(QPalette::Current, QPalette::PlaceholderText));
    }
}

void TodoView::recolorRows()
{
    // Only the colour changes, and dataChanged() would reset an open editor.
    const QSignalBlocker blocker(m_tree->model());
    for (QTreeWidgetItemIterator row(m_tree); *row; ++row) {
        colorRow(**row);
    }
}

bool TodoView::applyFilter(QTreeWidgetItem *row)
{
    bool isShown = matchesFilter(m_filter->currentData().toInt(),
                                 row->data(0, TaskTree::completedRole).toBool());
    for (int i = 0; i < row->childCount(); ++i) {
        if (applyFilter(row->child(i))) {
            isShown = true;
        }
    }
    row->setHidden(!isShown);
    return isShown;
}

void TodoView::updateSummary()
{
    const QList<Task> tasks = m_service->repository()->allTasks();
    const auto active = std::count_if(tasks.cbegin(), tasks.cend(),
                                      [](const Task &task) { return !task.completed; });
    m_summary->setText(tr("%1 active · %2 total").arg(active).arg(tasks.size()));
}

void TodoView::updateEmptyText()
{
    if (m_tree->rowAt(0)) {
        m_tree->setEmptyText(QString(), QString());
    } else if (m_tree->topLevelItemCount() == 0) {
        m_tree->setEmptyText(tr("No tasks yet"),
                             m_deleted.isEmpty()
                                 ? tr("Type one above and press Enter")
                                 : tr("Press Ctrl+Z here to bring back what you deleted"));
    } else if (m_filter->currentData().toInt() == int(TaskStatusFilter::Completed)) {
        m_tree->setEmptyText(tr("No completed tasks"), tr("Press Space on a task to complete it"));
    } else {
        m_tree->setEmptyText(tr("No active tasks"), tr("All of them are completed"));
    }
}

void TodoView::addTaskFromInput()
{
    const QString title = m_input->text().trimmed();
    if (title.isEmpty()) {
        return;
    }
    const QString id = m_service->createTask(title);
    m_input->clear();
    showTask(id);
}

void TodoView::onItemChanged(QTreeWidgetItem *row)
{
    if (m_isRefreshing || !row) {
        return;
    }
    const QString id = row->data(0, TaskTree::idRole).toString();
    const bool isChecked = row->checkState(0) == Qt::Checked;
    if (isChecked != row->data(0, TaskTree::completedRole).toBool()) {
        m_service->setCompleted(id, isChecked);
        announce(this, isChecked ? tr("Completed") : tr("Active"));
    } else {
        m_service->updateTitle(id, row->text(0));
    }
    if (!qtversion::editorOf(*m_tree, m_tree->indexFromItem(row))) {
        refreshAfterAction();
        return;
    }
    // The editor closes after it has committed its text, and needs its row until then.
    connect(m_tree->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
            &TodoView::refreshAfterEdit, Qt::SingleShotConnection);
}

void TodoView::showContextMenu(const QPoint &position)
{
    QTreeWidgetItem *row = m_tree->itemAt(position);
    if (!row) {
        return;
    }
    m_tree->setCurrentItem(row);

    QMenu menu(this);
    const QAction *addAction = menu.addAction(tr("Add Subtask"));
    const QAction *deleteAction = menu.addAction(tr("Delete"));
    const QAction *chosen = menu.exec(m_tree->viewport()->mapToGlobal(position));
    if (chosen == addAction) {
        m_tree->scrollToItem(addSubtask());
    } else if (chosen == deleteAction) {
        deleteCurrentTask();
    }
}

QTreeWidgetItem *TodoView::addSubtask()
{
    const QString id = m_service->createSubTask(currentTaskId(), tr("New Subtask"));
    if (id.isEmpty()) {
        return nullptr;
    }
    refreshAfterAction();
    return m_tree->visibleRow(id);
}

void TodoView::deleteCurrentTask()
{
    const QString id = currentTaskId();
    if (!id.isEmpty()) {
        m_deleted.deleteTask(id);
        refreshAfterAction();
    }
}

void TodoView::restoreDeletedTask()
{
    const QString id = m_deleted.restoreLast();
    if (!id.isEmpty()) {
        refreshAfterAction();
        m_tree->setCurrentRow(m_tree->visibleRow(id));
    }
}

QString TodoView::currentTaskId() const
{
    const QTreeWidgetItem *row = m_tree->currentItem();
    return row ? row->data(0, TaskTree::idRole).toString() : QString();
}
