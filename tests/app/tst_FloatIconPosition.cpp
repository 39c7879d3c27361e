// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FloatIconPosition.h"
#include "support/TestProgram.h"

#include <QTest>

class tst_FloatIconPosition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placesTheIcon_data();
    void placesTheIcon();
    void withoutAScreenItIsTheStoredPlace();
};

void tst_FloatIconPosition::placesTheIcon_data()
{
    QTest::addColumn<QPoint>("stored");
    QTest::addColumn<QPoint>("expected");

    const QPoint corner(1939, 979);
    QTest::newRow("never placed: the corner") << QPoint(-1, -1) << corner;
    QTest::newRow("negative x: the corner") << QPoint(-1, 300) << corner;
    QTest::newRow("negative y: the corner") << QPoint(300, -1) << corner;
    QTest::newRow("the origin: there") << QPoint(0, 0) << QPoint(0, 0);
    QTest::newRow("a place: there") << QPoint(120, 300) << QPoint(120, 300);
    QTest::newRow("off every screen: there") << QPoint(9000, 9000) << QPoint(9000, 9000);
}

void tst_FloatIconPosition::placesTheIcon()
{
    QFETCH(QPoint, stored);
    QTEST(floatIconPosition(stored, QRect(80, 40, 1920, 1000)), "expected");
}

void tst_FloatIconPosition::withoutAScreenItIsTheStoredPlace()
{
    QCOMPARE(floatIconPosition(QPoint(-1, -1), std::nullopt), QPoint(-1, -1));
}

VASKEL_TEST(tst_FloatIconPosition, QCoreApplication)
#include "tst_FloatIconPosition.moc"
