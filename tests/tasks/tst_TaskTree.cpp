// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskTree.h"

#include "support/ScreenReader.h"
#include "support/TestProgram.h"
#include "tasks/TaskDelegate.h"

#include <QApplication>
#include <QHoverEvent>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QColor selectedColor(0, 0, 255);
const QColor hoverColor(0, 255, 0);
const QColor baseColor(255, 255, 255);

/// A tree of three levels with a style sheet like the program's, in a window.
struct Tree
{
    Tree()
    {
        tree.setItemDelegate(new TaskDelegate(&tree));
        tree.setStyleSheet(u"QTreeView { background: #ffffff; color: #000000; outline: none; }"
                           "QTreeView::item { min-height: 30px; border-radius: 8px; }"
                           "QTreeView::item:hover { background: #00ff00; }"
                           "QTreeView::item:selected { background: #0000ff; color: #ffffff; }"_s);
        parent = addRow(tree.invisibleRootItem(), u"parent"_s);
        child = addRow(parent, u"child"_s);
        grandchild = addRow(child, u"grandchild"_s);
        tree.expandAll();
        tree.resize(400, 300);
        tree.show();
    }

    static QTreeWidgetItem *addRow(QTreeWidgetItem *above, const QString &id)
    {
        auto *row = new QTreeWidgetItem(above, {id});
        row->setData(0, TaskTree::idRole, id);
        row->setCheckState(0, Qt::Unchecked);
        row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
        return row;
    }

    void hover(const QPoint &position)
    {
        QHoverEvent event(QEvent::HoverMove, position, tree.viewport()->mapToGlobal(position),
                          QPointF(-1, -1));
        QCoreApplication::sendEvent(tree.viewport(), &event);
    }

    /// The pixels of the row from the left edge of the tree to the right.
    QImage line(const QTreeWidgetItem *row)
    {
        const QRect item = tree.visualItemRect(row);
        return tree.viewport()
            ->grab(QRect(0, item.top(), tree.viewport()->width(), item.height()))
            .toImage();
    }

    TaskTree tree;
    QTreeWidgetItem *parent;
    QTreeWidgetItem *child;
    QTreeWidgetItem *grandchild;
};

/// Whether the columns from `left` to `right` have this colour at the height `y`.
bool isFilled(const QImage &image, int left, int right, int y, const QColor &color)
{
    for (int x = left; x <= right; ++x) {
        if (image.pixelColor(x, y) != color) {
            return false;
        }
    }
    return true;
}

int count(const QImage &image, const QRect &area, const QColor &color)
{
    int found = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            found += image.pixelColor(x, y) == color ? 1 : 0;
        }
    }
    return found;
}

} // namespace

class tst_TaskTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void selectedRowIsOneShape();
    void hoveredRowIsOneShape();
    void otherRowsHaveNoBackground();
    void shapeHasRoundCornersAtItsEnds();
    void outlineSurroundsTheWholeRow();
    void arrowHasTheColourOfTheText();
    void rowWithoutChildrenHasNoArrow();
    void arrowIsOnTheRightOfARightToLeftTree();
    void findsAVisibleRowById();
    void paintsTheEmptyText();
    void wrapsTheEmptyText();
    void currentRowIsSaidWithoutTheFocus();
};

void tst_TaskTree::initTestCase()
{
    QApplication::setStyle(u"fusion"_s); // as in the program
}

void tst_TaskTree::selectedRowIsOneShape()
{
    Tree tree;
    for (QTreeWidgetItem *row : {tree.parent, tree.child, tree.grandchild}) {
        tree.tree.setCurrentItem(row);
        const QImage line = tree.line(row);
        // Above the text and the check box, right of one round corner and left of the other.
        QVERIFY(isFilled(line, 9, line.width() - 10, 0, selectedColor));
        QVERIFY(isFilled(line, 0, 3, line.height() / 2, selectedColor));
    }
}

void tst_TaskTree::hoveredRowIsOneShape()
{
    Tree tree;
    const QRect item = tree.tree.visualItemRect(tree.grandchild);
    for (const int x : {item.center().x(), item.left() / 2}) {
        tree.hover(QPoint(x, item.center().y()));
        const QImage line = tree.line(tree.grandchild);
        QVERIFY(isFilled(line, 9, line.width() - 10, 0, hoverColor));
    }
}

void tst_TaskTree::otherRowsHaveNoBackground()
{
    Tree tree;
    tree.tree.setCurrentItem(tree.child);
    const QImage line = tree.line(tree.grandchild);
    QVERIFY(isFilled(line, 0, line.width() - 1, 0, baseColor));
}

void tst_TaskTree::shapeHasRoundCornersAtItsEnds()
{
    Tree tree;
    tree.tree.setCurrentItem(tree.child);
    const QImage line = tree.line(tree.child);
    QCOMPARE(line.pixelColor(0, 0), baseColor);
    QCOMPARE(line.pixelColor(line.width() - 1, 0), baseColor);
    QCOMPARE(line.pixelColor(0, line.height() - 1), baseColor);
}

void tst_TaskTree::outlineSurroundsTheWholeRow()
{
    Tree tree;
    tree.tree.activateWindow();
    tree.tree.setFocus();
    QTRY_VERIFY(tree.tree.hasFocus());
    tree.tree.setCurrentItem(tree.child, 0, QItemSelectionModel::NoUpdate);
    const QImage line = tree.line(tree.child);
    const int middle = line.height() / 2;
    QVERIFY(line.pixelColor(1, middle) != baseColor);
    QVERIFY(line.pixelColor(line.width() - 2, middle) != baseColor);
    // The left end of the item has no frame of its own.
    const int left = tree.tree.visualItemRect(tree.child).left();
    QCOMPARE(line.pixelColor(left + 1, middle), baseColor);
}

void tst_TaskTree::arrowHasTheColourOfTheText()
{
    Tree tree;
    const QRect item = tree.tree.visualItemRect(tree.child);
    const QRect arrow(item.left() - tree.tree.indentation(), 0, tree.tree.indentation(),
                      item.height());
    QVERIFY(count(tree.line(tree.child), arrow, Qt::black) > 0);
    tree.tree.setCurrentItem(tree.child);
    QVERIFY(count(tree.line(tree.child), arrow, Qt::white) > 0);
    QCOMPARE(count(tree.line(tree.child), arrow, Qt::black), 0);
}

void tst_TaskTree::rowWithoutChildrenHasNoArrow()
{
    Tree tree;
    const QRect item = tree.tree.visualItemRect(tree.grandchild);
    const QImage line = tree.line(tree.grandchild);
    const QRect indentation(0, 0, item.left(), line.height());
    QCOMPARE(count(line, indentation, baseColor), indentation.width() * indentation.height());
}

void tst_TaskTree::arrowIsOnTheRightOfARightToLeftTree()
{
    Tree tree;
    tree.tree.setLayoutDirection(Qt::RightToLeft);
    const QRect item = tree.tree.visualItemRect(tree.child);
    const QImage line = tree.line(tree.child);
    const QRect arrow(item.right() + 1, 0, tree.tree.indentation(), line.height());
    QVERIFY(count(line, arrow, Qt::black) > 0);
}

void tst_TaskTree::findsAVisibleRowById()
{
    Tree tree;
    QCOMPARE(tree.tree.visibleRow(u"grandchild"_s), tree.grandchild);
    QCOMPARE(tree.tree.visibleRow(u"none"_s), nullptr);
    tree.grandchild->setHidden(true);
    QCOMPARE(tree.tree.visibleRow(u"grandchild"_s), nullptr);
    QCOMPARE(tree.tree.visibleRow(u"child"_s), tree.child);
}

void tst_TaskTree::paintsTheEmptyText()
{
    Tree tree;
    tree.tree.removeRows();
    const auto isBlank = [&tree] {
        const QImage image = tree.tree.viewport()->grab().toImage();
        return count(image, image.rect(), baseColor) == image.width() * image.height();
    };
    QVERIFY(isBlank());
    QCOMPARE(tree.tree.accessibleDescription(), QString());
    tree.tree.setEmptyText(u"No tasks"_s, u"Add one"_s);
    QVERIFY(!isBlank());
    QCOMPARE(tree.tree.accessibleDescription(), u"No tasks\nAdd one"_s);
    tree.tree.setEmptyText(QString(), QString());
    QVERIFY(isBlank());
    QCOMPARE(tree.tree.accessibleDescription(), QString());
}

void tst_TaskTree::wrapsTheEmptyText()
{
    Tree tree;
    tree.tree.removeRows();
    const QString text = u"word "_s.repeated(20);
    tree.tree.setEmptyText(text, text);
    // Both lines are longer than the tree is wide.
    const QImage image = tree.tree.viewport()->grab().toImage();
    const QRect left(0, 0, 8, image.height());
    const QRect right(image.width() - 8, 0, 8, image.height());
    QCOMPARE(count(image, left, baseColor), left.width() * left.height());
    QCOMPARE(count(image, right, baseColor), right.width() * right.height());
}

void tst_TaskTree::currentRowIsSaidWithoutTheFocus()
{
    TaskTree tree;
    QTreeWidgetItem *parent = Tree::addRow(tree.invisibleRootItem(), u"parent"_s);
    Tree::addRow(parent, u"child"_s);
    QTreeWidgetItem *other = Tree::addRow(tree.invisibleRootItem(), u"other"_s);
    const ScreenReader reader;
    tree.setCurrentRow(other); // below a branch that is collapsed
    tree.expandAll();
    tree.setCurrentRow(parent);
    tree.setCurrentRow(other);
    QCOMPARE(reader.names(), (QStringList{u"other"_s, u"parent"_s, u"other"_s}));
}

VASKEL_TEST(tst_TaskTree, QApplication)
#include "tst_TaskTree.moc"
