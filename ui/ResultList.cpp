// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultList.h"

#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "platform/QtVersion.h"
#include "ui/ResultDelegate.h"
#include "ui/ResultItem.h"
#include "widgets/AccessibleName.h"

#include <QCoreApplication>
#include <QMenu>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Whether two records stand for the same thing, even if their texts differ.
bool areAlike(const QVariantMap &record, const QVariantMap &other)
{
    const QVariantMap action = recordAction(record);
    const QString path = recordPath(record);
    if (action.isEmpty() && path.isEmpty()) {
        return record == other;
    }
    return action == recordAction(other) && path == recordPath(other);
}

} // namespace

ResultList::ResultList(AppLauncher *launcher, QWidget *parent)
    : QListWidget(parent)
    , m_launcher(launcher)
    , m_delegate(new ResultDelegate(this))
{
    setObjectName(u"resultList"_s);
    setIconSize(QSize(40, 40));
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setUniformItemSizes(true);
    setItemDelegate(m_delegate);
    setAccessibleNames(this, tr("Results"));
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QListWidget::customContextMenuRequested, this, &ResultList::openMenu);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ResultList::updateDigits);
}

void ResultList::showResults(const QVariantList &results, const QStringList &searchTexts)
{
    m_delegate->setSearchTexts(searchTexts);
    showResults(results);
}

void ResultList::showResults(const QVariantList &results)
{
    clear();
    addRows(results);
    if (count() > 0) {
        setCurrentRow(0);
    }
    updateDigits();
}

void ResultList::setDigitsVisible(bool visible)
{
    if (visible != m_areDigitsVisible) {
        m_areDigitsVisible = visible;
        m_delegate->setFirstDigitRow(-1);
        viewport()->update();
        updateDigits();
    }
}

int ResultList::firstVisibleRow() const
{
    const QModelIndex top = indexAt(QPoint(viewport()->width() / 2, 0));
    const bool isCut = top.isValid() && visualRect(top).center().y() < 0;
    return isCut && top.row() + 1 < count() ? top.row() + 1 : top.row();
}

void ResultList::updateRecords(const QVariantList &records)
{
    const QVariantMap current = currentRecord();
    const int row = currentRow();
    const int scrollPosition = verticalScrollBar()->value();

    showResults(records);
    if (row < 0 || count() == 0) {
        return;
    }
    doItemsLayout(); // otherwise the scroll bar would still have the range of an empty list
    verticalScrollBar()->setValue(scrollPosition);
    const auto isCurrent = [&current](const QVariant &record) {
        return areAlike(record.toMap(), current);
    };
    const auto found = std::find_if(records.cbegin(), records.cend(), isCurrent);
    setCurrentRow(found == records.cend() ? std::min(row, count() - 1)
                                          : int(found - records.cbegin()));
}

void ResultList::moveSelection(int delta)
{
    if (count() > 0) {
        setCurrentRow(std::clamp(currentRow() + delta, 0, count() - 1));
    }
}

int ResultList::rowsPerPage() const
{
    return std::max(viewport()->height() / std::max(sizeHintForRow(0), 1), 1);
}

void ResultList::togglePin(const QVariantMap &record)
{
    const QString path = recordPath(record);
    if (path.isEmpty()) {
        return;
    }
    if (m_launcher->isPinned(path)) {
        m_launcher->unpinApp(path);
    } else {
        m_launcher->pinApp(path, recordTitle(record), recordIcon(record));
    }
}

QVariantMap ResultList::currentRecord() const
{
    const QListWidgetItem *item = currentItem();
    return item ? recordOf(*item) : QVariantMap();
}

// Tells a screen reader the current row: the focus stays in the box while keys choose a row.
void ResultList::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListWidget::currentChanged(current, previous);
    if (current.isValid()) {
        qtversion::sayCurrentChild(this, current.row());
    }
}

void ResultList::updateDigits()
{
    if (m_areDigitsVisible) {
        m_delegate->setFirstDigitRow(firstVisibleRow());
        viewport()->update(); // a scrolled list paints the new rows alone
    }
}

// One model signal per row would take longer than the rows, so block them. The view has no row yet;
// reset() tells it of all.
void ResultList::addRows(const QVariantList &records)
{
    {
        const QSignalBlocker blocker(model());
        for (const QVariant &record : records) {
            addItem(new ResultItem(record.toMap()));
        }
    }
    reset();
}

void ResultList::openMenu(const QPoint &position)
{
    const QListWidgetItem *item = itemAt(position);
    if (!item) {
        return;
    }
    // Copy the record: a search may replace the rows while the menu is open.
    const QVariantMap record = recordOf(*item);
    const QString path = recordPath(record);
    if (path.isEmpty()) {
        return;
    }

    QMenu menu(window());
    const QAction *action = menu.addAction(
        m_launcher->isPinned(path) ? QCoreApplication::translate("MainWindow", "Unpin from Start")
                                   : QCoreApplication::translate("MainWindow", "Pin to Start"));
    if (menu.exec(viewport()->mapToGlobal(position)) == action) {
        togglePin(record);
    }
}
