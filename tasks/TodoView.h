// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tasks/DeletedTasks.h"
#include "tasks/TaskRepository.h"

#include <QAbstractItemDelegate>
#include <QList>
#include <QWidget>

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QPoint;
class QPushButton;
class QTreeWidgetItem;
class TaskService;
class TaskTree;

/// The page of the task list: an input line, a filter, a count and the tree. Does not store tasks:
/// each action calls the service and then rebuilds the tree.
class TodoView : public QWidget
{
    Q_OBJECT

public:
    /// The service is not owned and must outlive the page.
    explicit TodoView(TaskService *service, QWidget *parent = nullptr);
    ~TodoView() override;

    /// Reloads the tasks and focuses the input line. Call each time the page opens.
    void activate();

    /// Reloads the tasks and makes the row of this one current and visible, unless the filter hides
    /// it. The focus stays.
    void showTask(const QString &id);

Q_SIGNALS:
    /// The user wants to leave the page.
    void closeRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QBoxLayout *buildHeading();
    QBoxLayout *buildEntry();
    QBoxLayout *buildFilter();
    void buildTree();
    void connectWidgets();

    void refresh();
    void refreshAfterAction();
    void refreshAfterEdit(QWidget *editor, QAbstractItemDelegate::EndEditHint hint);
    QList<QTreeWidgetItem *> buildChildren(const TaskGroups &groups, const QString &parentId,
                                           int level) const;
    QTreeWidgetItem *buildRow(const Task &task) const;
    void colorRow(QTreeWidgetItem &row) const;
    void recolorRows();
    bool applyFilter(QTreeWidgetItem *row);
    void updateSummary();
    void updateEmptyText();

    void addTaskFromInput();
    void onItemChanged(QTreeWidgetItem *row);
    void showContextMenu(const QPoint &position);
    QTreeWidgetItem *addSubtask();
    void deleteCurrentTask();
    void restoreDeletedTask();
    QString currentTaskId() const;

    TaskService *m_service;
    DeletedTasks m_deleted;
    QLineEdit *m_input = nullptr;
    QComboBox *m_filter = nullptr;
    QLabel *m_summary = nullptr;
    TaskTree *m_tree = nullptr;
    QPushButton *m_addButton = nullptr;
    bool m_isRefreshing = false;
};
