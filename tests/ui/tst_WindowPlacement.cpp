// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowPlacement.h"

#include "support/TestProgram.h"
#include "ui/FakeScreen.h"
#include "ui/ScreenArea.h"
#include "ui/WindowTest.h"

#include <QCursor>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

// The screen of the offscreen platform is large enough for the window.
const QRect primary(0, 0, 800, 800);
const QPoint centred(20, 160);
const QSize fullSize(760, 460);

void sendMouse(Window &w, QEvent::Type type, const QPoint &position, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, w.window.mapToGlobal(position), button, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(w.window.windowHandle(), &event);
}

/// Drags the window by its title bar to this position. The window system keeps the release.
void drag(Window &w, const QPoint &position)
{
    const QPoint grip(200, 18);
    sendMouse(w, QEvent::MouseButtonPress, grip, Qt::LeftButton);
    w.drift(position);
    sendMouse(w, QEvent::MouseMove, grip, Qt::NoButton);
}

void clickBox(Window &w)
{
    const QPoint centre = w.edit->mapTo(&w.window, w.edit->rect().center());
    sendMouse(w, QEvent::MouseButtonPress, centre, Qt::LeftButton);
    sendMouse(w, QEvent::MouseButtonRelease, centre, Qt::NoButton);
}

/// Waits until a drag that has just ended would have been stored.
void waitForDrag()
{
    bool isOver = false;
    QTimer::singleShot(600, qApp, [&] { isOver = true; });
    QTRY_VERIFY(isOver);
}

} // namespace

class tst_WindowPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void initialPositionIsAFifthDown_data();
    void initialPositionIsAFifthDown();

    void firstShowIsCentredAFifthDown();
    void firstShowIsOnTheScreenOfThePointer();
    void firstShowIsOnAScreenWithoutAnAvailablePart();
    void firstShowOnAScreenOfAnotherFactorHasItsSize();
    void firstShowStaysWhereTheWindowWasMoved();
    void firstShowIsWhereTheLastDragLeftTheWindow();
    void firstShowLeavesRoomForAllRows();
    void firstShowCentresAWindowThatPinsWiden();
    void firstShowMovesInsideTheScreens_data();
    void firstShowMovesInsideTheScreens();
    void laterShowsKeepThePosition();
    void laterShowsKeepAPositionOverTheEdge();

    void dragIsStored();
    void dragThatEndsByHidingIsStored();
    void lateMoveAfterTheReleaseIsStored();
    void clickStoresNothing();
    void moveByTheWindowSystemIsNotStored();
    void moveByTheProgramIsNotStored();

    void comesBackWhenItsScreenWentWhileItWasHidden();
    void returnsToItsScreen();
    void lostScreenIsNotStored();
};

void tst_WindowPlacement::init()
{
    reset();
    QCOMPARE(screenAreas(), QList{primary});
    QCursor::setPos(400, 700);
}

void tst_WindowPlacement::initialPositionIsAFifthDown_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QPoint>("position");

    QTest::newRow("a usual screen") << QRect(0, 0, 1920, 1080) << QPoint(580, 216);
    QTest::newRow("a screen with panels") << QRect(64, 30, 1856, 1050) << QPoint(612, 240);
    QTest::newRow("left of the origin") << QRect(-1280, -200, 1280, 1000) << QPoint(-1020, 0);
    QTest::newRow("a low screen: as far up as needed") << QRect(0, 0, 911, 512) << QPoint(75, 52);
    QTest::newRow("a low screen that it just fits") << QRect(10, 20, 760, 460) << QPoint(10, 20);
    QTest::newRow("too small a screen: its corner") << QRect(5, 7, 683, 427) << QPoint(5, 7);
}

void tst_WindowPlacement::initialPositionIsAFifthDown()
{
    QFETCH(QRect, area);
    QTEST(initialPosition(fullSize, area), "position");
}

void tst_WindowPlacement::firstShowIsCentredAFifthDown()
{
    Window w;
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), centred);
}

void tst_WindowPlacement::firstShowIsOnTheScreenOfThePointer()
{
    const FakeScreen left(QRect(-1280, 0, 1280, 1000));
    QCursor::setPos(-100, 900);
    Window w;
    w.window.show();
    QCOMPARE(w.window.pos(), QPoint(-1020, 200));
}

void tst_WindowPlacement::firstShowIsOnAScreenWithoutAnAvailablePart()
{
    FakeScreen left(QRect(-1280, 0, 1280, 1000));
    left.setAvailableGeometry({});
    QCursor::setPos(-100, 900);
    Window w;
    w.window.show();
    QCOMPARE(w.window.geometry(), QRect(QPoint(-1020, 200), fullSize));
}

void tst_WindowPlacement::firstShowOnAScreenOfAnotherFactorHasItsSize()
{
    const FakeScreen left(QRect(-2000, 0, 1000, 1000), true);
    const FakeScreen right(QRect(-1000, 0, 2000, 2000), false, 2);
    Window w;
    w.settings.setWindowPosition(QPoint(-880, 200));
    w.enter(u"note"_s);
    w.settle();
    const QSize size = w.window.size();
    QCOMPARE(w.window.screen()->devicePixelRatio(), 1.0);
    QVERIFY(w.showActive());
    w.settle();
    QCOMPARE(w.window.screen()->devicePixelRatio(), 2.0);
    QCOMPARE(w.window.geometry(), QRect(QPoint(-880, 200), size));
    QCOMPARE(w.window.windowHandle()->geometry(), w.window.geometry());
}

void tst_WindowPlacement::firstShowStaysWhereTheWindowWasMoved()
{
    Window w;
    w.settings.setWindowPosition(QPoint(10, 20));
    w.window.move(-30, 40);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(-30, 40));
}

void tst_WindowPlacement::firstShowIsWhereTheLastDragLeftTheWindow()
{
    Window w;
    w.settings.setWindowPosition(QPoint(15, 25));
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(15, 25));
}

void tst_WindowPlacement::firstShowLeavesRoomForAllRows()
{
    Window w;
    w.settings.setWindowPosition(QPoint(15, 600));
    w.enter(u"no such program"_s); // the window is lower at first
    w.settle();
    QVERIFY(w.window.height() < fullSize.height());
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(15, 800 - 460));
}

void tst_WindowPlacement::firstShowCentresAWindowThatPinsWiden()
{
    Window w;
    w.window.setMinimumWidth(780);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(10, centred.y()));
}

void tst_WindowPlacement::firstShowMovesInsideTheScreens_data()
{
    QTest::addColumn<QPoint>("stored");
    QTest::addColumn<QPoint>("shown");

    QTest::newRow("partly outside") << QPoint(100, -5) << QPoint(40, 0);
    QTest::newRow("on a screen that has gone") << QPoint(2000, 100) << QPoint(40, 100);
    QTest::newRow("left of all screens") << QPoint(-3000, 5000) << QPoint(0, 340);
}

void tst_WindowPlacement::firstShowMovesInsideTheScreens()
{
    QFETCH(QPoint, stored);
    Window w;
    w.settings.setWindowPosition(stored);
    QVERIFY(w.showActive());
    QTEST(w.window.pos(), "shown");
    QCOMPARE(w.settings.windowPosition(), stored);
}

void tst_WindowPlacement::laterShowsKeepThePosition()
{
    Window w;
    QVERIFY(w.showActive());
    drag(w, QPoint(33, 44));
    for (const QString &text : {u"note"_s, u"no such program"_s, u""_s}) {
        w.window.hide();
        w.enter(text);
        w.settle();
        QVERIFY(w.showActive());
        QCOMPARE(w.window.pos(), QPoint(33, 44));
    }
}

void tst_WindowPlacement::laterShowsKeepAPositionOverTheEdge()
{
    Window w;
    QVERIFY(w.showActive());
    drag(w, QPoint(-300, 600));
    w.window.hide();
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(-300, 600));
}

void tst_WindowPlacement::dragIsStored()
{
    Window w;
    QVERIFY(w.showActive());
    QCOMPARE(w.settings.windowPosition(), std::nullopt);
    drag(w, QPoint(33, 44));
    QTRY_COMPARE(w.settings.windowPosition(), QPoint(33, 44));
    drag(w, QPoint(-50, 66));
    QTRY_COMPARE(w.settings.windowPosition(), QPoint(-50, 66));
}

void tst_WindowPlacement::dragThatEndsByHidingIsStored()
{
    Window w;
    QVERIFY(w.showActive());
    drag(w, QPoint(33, 44));
    w.window.hide();
    QCOMPARE(w.settings.windowPosition(), QPoint(33, 44));
}

void tst_WindowPlacement::lateMoveAfterTheReleaseIsStored()
{
    Window w;
    QVERIFY(w.showActive());
    clickBox(w);
    w.drift(QPoint(33, 44));
    QTRY_COMPARE(w.settings.windowPosition(), QPoint(33, 44));
}

void tst_WindowPlacement::clickStoresNothing()
{
    Window w;
    QVERIFY(w.showActive());
    clickBox(w);
    waitForDrag();
    QCOMPARE(w.settings.windowPosition(), std::nullopt);

    // What moves the window later is no drag.
    w.drift(QPoint(33, 44));
    waitForDrag();
    QCOMPARE(w.settings.windowPosition(), std::nullopt);
}

void tst_WindowPlacement::moveByTheWindowSystemIsNotStored()
{
    Window w;
    QVERIFY(w.showActive());
    w.drift(QPoint(33, 44));
    waitForDrag();
    w.window.hide();
    QCOMPARE(w.settings.windowPosition(), std::nullopt);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(33, 44));
}

void tst_WindowPlacement::moveByTheProgramIsNotStored()
{
    Window w;
    QVERIFY(w.showActive());
    w.window.move(33, 44);
    waitForDrag();
    w.window.hide();
    QCOMPARE(w.settings.windowPosition(), std::nullopt);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(33, 44));
}

void tst_WindowPlacement::comesBackWhenItsScreenWentWhileItWasHidden()
{
    Window w;
    {
        const FakeScreen right(QRect(800, 0, 1280, 1000));
        QVERIFY(w.showActive());
        drag(w, QPoint(1100, 500));
        w.window.hide();
    }
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(40, 800 - w.window.height()));
}

void tst_WindowPlacement::returnsToItsScreen()
{
    Window w;
    const QRect geometry(-1280, 0, 1280, 1000);
    {
        const FakeScreen left(geometry);
        QVERIFY(w.showActive());
        drag(w, QPoint(-1100, 300));
        w.window.hide();
    }
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(0, 300));
    w.window.hide();

    const FakeScreen left(geometry);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.pos(), QPoint(-1100, 300));
}

void tst_WindowPlacement::lostScreenIsNotStored()
{
    Window w;
    {
        const FakeScreen right(QRect(800, 0, 1280, 1000));
        QVERIFY(w.showActive());
        drag(w, QPoint(1100, 500));
        QTRY_COMPARE(w.settings.windowPosition(), QPoint(1100, 500));
        w.window.hide();
    }
    QVERIFY(w.showActive());
    waitForDrag();
    w.window.hide();
    QCOMPARE(w.settings.windowPosition(), QPoint(1100, 500));
}

VASKEL_TEST(tst_WindowPlacement, QApplication)
#include "tst_WindowPlacement.moc"
