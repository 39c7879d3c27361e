// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ListHeight.h"

#include "support/TestProgram.h"

#include <QTest>

class tst_ListHeight : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fitsTheRows_data();
    void fitsTheRows();
};

void tst_ListHeight::fitsTheRows_data()
{
    QTest::addColumn<int>("rowCount");
    QTest::addColumn<int>("rowHeight");
    QTest::addColumn<int>("frameWidth");
    QTest::addColumn<int>("available");
    QTest::addColumn<int>("height");

    QTest::newRow("no rows take nothing") << 0 << 40 << 1 << 300 << 0;
    QTest::newRow("no rows take nothing where nothing is left") << 0 << 40 << 1 << -20 << 0;
    QTest::newRow("one row and the frame") << 1 << 40 << 1 << 300 << 52;
    QTest::newRow("without a frame the padding stays") << 1 << 40 << 0 << 300 << 50;
    QTest::newRow("several rows") << 5 << 40 << 2 << 300 << 214;
    QTest::newRow("rows that just fit") << 5 << 40 << 2 << 214 << 214;
    QTest::newRow("rows beyond the room are capped") << 5 << 40 << 2 << 213 << 213;
    QTest::newRow("many rows are capped") << 10000 << 40 << 1 << 344 << 344;
    QTest::newRow("less room than a row shows the row") << 5 << 40 << 1 << 39 << 40;
    QTest::newRow("no room shows a row") << 5 << 40 << 1 << 0 << 40;
    QTest::newRow("negative room shows a row") << 5 << 40 << 1 << -500 << 40;
    QTest::newRow("row without a height counts one pixel") << 3 << 0 << 0 << 300 << 13;
    QTest::newRow("row of unknown height counts one pixel") << 3 << -1 << 0 << 300 << 13;
    QTest::newRow("row without a height keeps its pixel") << 3 << 0 << 0 << -5 << 1;
}

void tst_ListHeight::fitsTheRows()
{
    QFETCH(int, rowCount);
    QFETCH(int, rowHeight);
    QFETCH(int, frameWidth);
    QFETCH(int, available);
    QTEST(listHeight(rowCount, rowHeight, frameWidth, available), "height");
}

VASKEL_TEST(tst_ListHeight, QCoreApplication)
#include "tst_ListHeight.moc"
