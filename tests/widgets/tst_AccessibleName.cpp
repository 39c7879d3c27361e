// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/AccessibleName.h"

#include "support/TestProgram.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

class tst_AccessibleName : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesATreeAndItsScrollBar();
    void namesAComboBoxItsListAndItsScrollBar();
};

void tst_AccessibleName::namesATreeAndItsScrollBar()
{
    QTreeWidget tree;
    setAccessibleNames(&tree, u"Tasks"_s);
    QCOMPARE(tree.accessibleName(), u"Tasks"_s);
    QCOMPARE(tree.verticalScrollBar()->accessibleName(), u"Tasks"_s);
}

void tst_AccessibleName::namesAComboBoxItsListAndItsScrollBar()
{
    QComboBox combo;
    setAccessibleNames(&combo, u"Filter"_s);
    QCOMPARE(combo.accessibleName(), u"Filter"_s);
    QCOMPARE(combo.view()->accessibleName(), u"Filter"_s);
    QCOMPARE(combo.view()->verticalScrollBar()->accessibleName(), u"Filter"_s);
}

VASKEL_TEST(tst_AccessibleName, QApplication)
#include "tst_AccessibleName.moc"
