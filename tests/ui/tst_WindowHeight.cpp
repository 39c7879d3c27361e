// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowHeight.h"

#include "support/TestProgram.h"

#include <QTest>

#include <algorithm>

/// The functions that need no window; tst_MainWindowHeight tests the rest.
class tst_WindowHeight : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listHeightFitsTheRows_data();
    void listHeightFitsTheRows();
    void distinguishesAnAnswerFromTheUser_data();
    void distinguishesAnAnswerFromTheUser();
};

void tst_WindowHeight::listHeightFitsTheRows_data()
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

void tst_WindowHeight::listHeightFitsTheRows()
{
    QFETCH(int, rowCount);
    QFETCH(int, rowHeight);
    QFETCH(int, frameWidth);
    QFETCH(int, available);
    QTEST(listHeight(rowCount, rowHeight, frameWidth, available), "height");
}

void tst_WindowHeight::distinguishesAnAnswerFromTheUser_data()
{
    QTest::addColumn<QList<int>>("requests");
    QTest::addColumn<int>("height");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<bool>("isAnswer");
    QTest::addColumn<QList<int>>("unanswered");

    const QList<int> requests = {300, 200, 400, 200};
    QTest::newRow("nothing was requested") << QList<int>() << 300 << 1.0 << false << QList<int>();
    QTest::newRow("answer to the oldest")
        << requests << 300 << 1.0 << true << QList<int>({200, 400, 200});
    QTest::newRow("answer to a later one goes with the older ones")
        << requests << 400 << 1.0 << true << QList<int>({200});
    QTest::newRow("answer to the first of equal ones")
        << requests << 200 << 1.0 << true << QList<int>({400, 200});
    QTest::newRow("another height is the user's and ends the waiting")
        << requests << 350 << 1.0 << false << QList<int>();
    QTest::newRow("one pixel off is the user's") << requests << 301 << 1.0 << false << QList<int>();
    QTest::newRow("one pixel off is the user's on a doubled screen")
        << requests << 301 << 2.0 << false << QList<int>();
    QTest::newRow("two pixels more are rounding on a fractional screen")
        << requests << 302 << 1.25 << true << QList<int>({200, 400, 200});
    QTest::newRow("two pixels less are rounding on a fractional screen")
        << requests << 298 << 1.5 << true << QList<int>({200, 400, 200});
    QTest::newRow("three pixels are the user's on a fractional screen")
        << requests << 303 << 1.25 << false << QList<int>();
}

void tst_WindowHeight::distinguishesAnAnswerFromTheUser()
{
    QFETCH(QList<int>, requests);
    QFETCH(const int, height);
    QFETCH(const qreal, ratio);
    QTEST(takeAnswer(requests, height, ratio), "isAnswer");
    // Not QCOMPARE(): for empty lists Qt passes null to memcmp(), which the sanitizer forbids.
    QFETCH(const QList<int>, unanswered);
    QVERIFY(std::equal(requests.cbegin(), requests.cend(), unanswered.cbegin(), unanswered.cend()));
}

VASKEL_TEST(tst_WindowHeight, QCoreApplication)
#include "tst_WindowHeight.moc"
