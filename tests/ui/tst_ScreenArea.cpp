// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ScreenArea.h"

#include "support/TestProgram.h"
#include "ui/FakeScreen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

namespace {

// One screen to the left of the origin, and a small one below the primary one.
const QRect primary(0, 0, 1280, 800);
const QRect left(-1024, 100, 1024, 768);
const QRect small(0, 800, 640, 400);
const QList<QRect> three = {primary, left, small};

} // namespace

class tst_ScreenArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsTheAvailablePartOfTheScreen();
    void takesAScreenWithoutAnAvailablePartAsAWhole();
    void findsTheNearestArea_data();
    void findsTheNearestArea();
    void movesInside_data();
    void movesInside();
    void withoutAreasNothingMoves();
};

void tst_ScreenArea::listsTheAvailablePartOfTheScreen()
{
    QCOMPARE(screenAreas(), QList{QGuiApplication::primaryScreen()->availableGeometry()});
}

void tst_ScreenArea::takesAScreenWithoutAnAvailablePartAsAWhole()
{
    const QScreen *primaryScreen = QGuiApplication::primaryScreen();
    windowtest::FakeScreen added(left);
    const QScreen *screen = QGuiApplication::screenAt(left.center());
    QVERIFY(screen && screen != primaryScreen);

    const QRect belowPanel = left.adjusted(0, 30, 0, 0);
    added.setAvailableGeometry(belowPanel);
    QCOMPARE(availableArea(screen), belowPanel);
    added.setAvailableGeometry({});
    QCOMPARE(availableArea(screen), left);
    QCOMPARE(screenAreas(), QList({primaryScreen->availableGeometry(), left}));
}

void tst_ScreenArea::findsTheNearestArea_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QRect>("area");

    QTest::newRow("inside the first") << QRect(10, 10, 300, 200) << primary;
    QTest::newRow("inside another") << QRect(-900, 200, 300, 200) << left;
    QTest::newRow("on two: that with the larger part") << QRect(-200, 200, 300, 200) << left;
    QTest::newRow("on two the other way") << QRect(-100, 200, 300, 200) << primary;
    QTest::newRow("outside: the nearest") << QRect(-2000, 0, 300, 200) << left;
    QTest::newRow("below all") << QRect(100, 3000, 300, 200) << small;
    QTest::newRow("far to the right") << QRect(5000, 100, 300, 200) << primary;
}

void tst_ScreenArea::findsTheNearestArea()
{
    QFETCH(QRect, rect);
    QTEST(areaNearest(rect, three), "area");
}

void tst_ScreenArea::movesInside_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QPoint>("position");

    QTest::newRow("inside stays") << QRect(10, 20, 300, 200) << QPoint(10, 20);
    QTest::newRow("filling it stays") << primary << QPoint(0, 0);
    QTest::newRow("over the right edge") << QRect(1000, 20, 300, 200) << QPoint(980, 20);
    QTest::newRow("over the lower edge") << QRect(700, 700, 300, 200) << QPoint(700, 600);
    QTest::newRow("over a corner") << QRect(1200, -50, 300, 200) << QPoint(980, 0);
    QTest::newRow("off all screens") << QRect(4000, 4000, 300, 200) << QPoint(980, 600);
    QTest::newRow("left of the origin stays") << QRect(-1024, 100, 300, 200) << QPoint(-1024, 100);
    QTest::newRow("between two") << QRect(-250, 200, 300, 200) << QPoint(-300, 200);
    QTest::newRow("too large shows its top left") << QRect(100, 900, 2000, 900) << QPoint(0, 800);
}

void tst_ScreenArea::movesInside()
{
    QFETCH(QRect, rect);
    QTEST(positionInside(rect, three), "position");
}

void tst_ScreenArea::withoutAreasNothingMoves()
{
    QCOMPARE(positionInside(QRect(4000, 50, 300, 200), QList<QRect>()), QPoint(4000, 50));
    QCOMPARE(areaNearest(QRect(4000, 50, 300, 200), {}), QRect());
}

VASKEL_TEST(tst_ScreenArea, QApplication)
#include "tst_ScreenArea.moc"
