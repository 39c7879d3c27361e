// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskTree.h"

#include "platform/QtVersion.h"

#include <QAccessible>
#include <QHeaderView>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTreeWidgetItemIterator>

namespace {

/// Owns rows that were removed from the tree.
class RemovedRows : public QObject
{
public:
    RemovedRows(const QList<QTreeWidgetItem *> &rows, QObject *parent)
        : QObject(parent)
        , m_rows(rows)
    {
    }

    ~RemovedRows() override { qDeleteAll(m_rows); }

    Q_DISABLE_COPY_MOVE(RemovedRows)

private:
    QList<QTreeWidgetItem *> m_rows;
};

} // namespace

TaskTree::TaskTree(QWidget *parent)
    : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setColumnCount(1);
    setIndentation(22);
    setAnimated(false);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setStretchLastSection(true);
}

void TaskTree::removeRows()
{
    // QTreeWidgetItem::setData() of an old row may be on the stack, so delete them in the event
    // loop.
    auto *oldRows = new RemovedRows(invisibleRootItem()->takeChildren(), this);
    oldRows->deleteLater();
}

void TaskTree::expandBranches()
{
    for (QTreeWidgetItemIterator row(this, QTreeWidgetItemIterator::HasChildren); *row; ++row) {
        (*row)->setExpanded(true);
    }
}

int TaskTree::currentRowNumber() const
{
    int number = 0;
    // Count the rows of collapsed branches too: a rebuild expands all.
    QTreeWidgetItemIterator row(const_cast<TaskTree *>(this), QTreeWidgetItemIterator::NotHidden);
    for (; *row && *row != currentItem(); ++row) {
        ++number;
    }
    return *row ? number : 0;
}

QTreeWidgetItem *TaskTree::rowAt(int number) const
{
    QTreeWidgetItem *last = nullptr;
    QTreeWidgetItemIterator row(const_cast<TaskTree *>(this), QTreeWidgetItemIterator::NotHidden);
    for (; *row && number >= 0; ++row) {
        last = *row;
        --number;
    }
    return last;
}

QTreeWidgetItem *TaskTree::visibleRow(const QString &id) const
{
    QTreeWidgetItemIterator row(const_cast<TaskTree *>(this), QTreeWidgetItemIterator::NotHidden);
    while (*row && (*row)->data(0, idRole).toString() != id) {
        ++row;
    }
    return *row;
}

void TaskTree::setCurrentRow(QTreeWidgetItem *row)
{
    if (row) {
        setCurrentItem(row, 0, QItemSelectionModel::NoUpdate);
    }
}

void TaskTree::setEmptyText(const QString &title, const QString &hint)
{
    if (title == m_emptyTitle && hint == m_emptyHint) {
        return;
    }
    m_emptyTitle = title;
    m_emptyHint = hint;
    setAccessibleDescription((title + u'\n' + hint).trimmed());
    viewport()->update();
}

QRect TaskTree::lineRect(const QRect &itemRect, const QModelIndex &index) const
{
    if (itemRect != visualRect(index)) {
        return itemRect;
    }
    return {0, itemRect.top(), viewport()->width(), itemRect.height()};
}

void TaskTree::paintLine(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    // QTreeView paints the indentation and the item as two shapes with rounded corners. This one
    // has the same colour and fills the gap.
    style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, this);
    paintArrow(painter, option, index);
}

// Tells a screen reader the current row: a new task becomes current while the focus stays in the
// field.
void TaskTree::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTreeWidget::currentChanged(current, previous);
    if (current.isValid() && QAccessible::isActive()) {
        int row = 1; // the first is the header, even if it is hidden
        for (QModelIndex above = indexAbove(current); above.isValid(); above = indexAbove(above)) {
            ++row;
        }
        qtversion::sayCurrentChild(this, row * columnCount() + current.column());
    }
}

void TaskTree::paintEvent(QPaintEvent *event)
{
    QTreeWidget::paintEvent(event);
    if (!m_emptyTitle.isEmpty()) {
        paintEmptyText();
    }
}

void TaskTree::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                       const QModelIndex &index) const
{
    // Newer versions of Qt fill a selected row, also behind the round corners of paintLine().
    QStyleOptionViewItem row = option;
    row.palette.setBrush(QPalette::Highlight, Qt::transparent);
    QTreeWidget::drawRow(painter, row, index);
}

void TaskTree::drawBranches(QPainter *, const QRect &, const QModelIndex &) const
{
    // Paints nothing: paintLine() would cover it.
}

void TaskTree::paintArrow(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    if (!model()->hasChildren(index)) {
        return;
    }
    const QRect item = visualRect(index);
    const qreal distance = indentation() / 2.0;
    const qreal x = isRightToLeft() ? item.right() + distance : item.left() - distance;
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(
        QPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text), 1.5,
             Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->translate(x, option.rect.center().y() + 0.5);
    if (!isExpanded(index)) {
        painter->rotate(isRightToLeft() ? 90 : -90);
    }
    const QPointF arrow[] = {{-4, -2}, {0, 2}, {4, -2}};
    painter->drawPolyline(arrow, 3);
    painter->restore();
}

void TaskTree::paintEmptyText() const
{
    QPainter painter(viewport());
    QFont titleFont = font();
    titleFont.setWeight(QFont::DemiBold);
    const int spacing = 6;
    const QRect area = viewport()->rect().adjusted(16, 0, -16, 0);
    const int flags = Qt::AlignHCenter | Qt::TextWordWrap;
    const QRect title = QFontMetrics(titleFont).boundingRect(area, flags, m_emptyTitle);
    const QRect hint = QFontMetrics(font()).boundingRect(area, flags, m_emptyHint);
    const int top = area.top() + (area.height() - title.height() - spacing - hint.height()) / 2;

    painter.setFont(titleFont);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(area.left(), top, area.width(), title.height()), flags, m_emptyTitle);
    painter.setFont(font());
    QColor hintColor = palette().color(QPalette::Text);
    hintColor.setAlphaF(0.7F); // the palette's placeholder is too faint to read on white
    painter.setPen(hintColor);
    painter.drawText(
        QRect(area.left(), top + title.height() + spacing, area.width(), hint.height()), flags,
        m_emptyHint);
}
