// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FloatIcon.h"

#include "settings/ThemeManager.h"
#include "support/EventCounter.h"
#include "support/FakePlatform.h"
#include "support/TestProgram.h"
#include "ui/FakeScreen.h"
#include "ui/WindowTest.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

/// The icon at a known position, with a real main window.
class Fixture
{
public:
    Fixture() { icon.move(300, 200); }

    void send(QEvent::Type type, const QPointF &global, Qt::MouseButton button,
              Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, icon.mapFromGlobal(global), global, button, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&icon, &event);
    }
    void press(const QPointF &global, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonPress, global, button, button);
    }
    void moveTo(const QPointF &global, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        send(QEvent::MouseMove, global, Qt::NoButton, buttons);
    }
    void release(const QPointF &global, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonRelease, global, button, Qt::NoButton);
    }
    void click(Qt::MouseButton button = Qt::LeftButton)
    {
        press(centre(), button);
        release(centre(), button);
    }
    QPointF centre() const { return icon.mapToGlobal(QPointF(24, 24)); }

    /// Opens the menu with a right click and triggers the action with this index, or dismisses the
    /// menu if it is -1. Returns the texts; a separator has an empty one.
    QStringList useMenu(const QPointF &global, int choice)
    {
        QStringList texts;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu) {
                return;
            }
            poll.stop();
            menuPosition = menu->pos();
            menuParent = menu->parentWidget();
            const QList<QAction *> actions = menu->actions();
            for (const QAction *action : actions) {
                texts.append(action->isSeparator() ? QString() : action->text());
            }
            if (choice < 0) {
                menu->close();
            } else {
                menu->setActiveAction(actions.at(choice));
                QTest::keyClick(menu, Qt::Key_Return);
            }
        });
        poll.start(0);
        press(global, Qt::RightButton);
        release(global, Qt::RightButton);
        return texts;
    }

    QImage painted()
    {
        QImage image(icon.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        icon.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    }

    QPoint storedPosition() const { return host.settings.floatIconPos(); }
    MainWindow &window() { return host.window; }

    Window host;
    ThemeManager theme;
    FloatIcon icon{&host.settings, &theme, &host.window};
    QPoint menuPosition;
    QPointer<QWidget> menuParent;
};

constexpr int toggleEntry = 0;
constexpr int hideIconEntry = 2;

} // namespace

class tst_FloatIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void isASmallToolWindowAboveAllOthers();
    void hasTheProgramsName();

    void clickHidesAVisibleWindow();
    void clickShowsAHiddenWindowWithTheFocusInTheBox();
    void clickDoesNotShowAWindowThatItHidByFocusLoss();
    void clickRestoresAMinimisedWindow();
    void doubleClickTogglesTwice();
    void clickStoresTheUnchangedPosition();
    void eachClickStoresThePosition();
    void clickWithoutAWindowOnlyStoresThePosition();
    void clickCannotShowAnotherWidget();

    void dragMovesTheIconAndStoresItsPositionAtTheEnd();
    void onePixelIsADrag();
    void dragDoesNotToggle();
    void clickAfterADragTogglesAgain();
    void dragMayLeaveTheScreen();
    void dragRoundsToWholePixels();
    void moveWithoutTheLeftButtonMovesNothing_data();
    void moveWithoutTheLeftButtonMovesNothing();
    void otherButtonsDoNothing_data();
    void otherButtonsDoNothing();

    void menuOffersTheOppositeState();
    void menuOpensAtThePointer();
    void menuOpensOnlyOnTheRelease();
    void menuTogglesTheWindow();
    void menuRestoresAMinimisedWindow();
    void menuHidesTheIcon();
    void dismissedMenuDoesNothing();
    void menuWithoutAWindowOffersToShowIt();
    void rightClickStoresNoPosition();

    void paintsADiscWithALetter_data();
    void paintsADiscWithALetter();
    void newPaletteRepaints();

    void withoutACompositorItIsMaskedRound();
    void maskFollowsTheCompositor();
    void refusesTheFocus();

    void comesBackWhenItsScreenGoes();
    void returnsWithItsScreen();
    void staysPartlyOffTheScreen();
    void dragAfterItCameBackCounts();

    void placesTheIcon_data();
    void placesTheIcon();
    void withoutAScreenItIsTheStoredPlace();
};

void tst_FloatIcon::isASmallToolWindowAboveAllOthers()
{
    const Fixture d;
    QCOMPARE(d.icon.windowFlags(), Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    QVERIFY(d.icon.testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(d.icon.size(), QSize(48, 48));
    QVERIFY(d.icon.isHidden());
}

void tst_FloatIcon::hasTheProgramsName()
{
    const Fixture d;
    QCOMPARE(d.icon.accessibleName(), u"Vaskel"_s);
}

void tst_FloatIcon::clickHidesAVisibleWindow()
{
    Fixture d;
    QVERIFY(d.host.showActive());
    d.click();
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::clickShowsAHiddenWindowWithTheFocusInTheBox()
{
    Fixture d;
    d.click();
    QVERIFY(d.window().isVisible());
    QTRY_VERIFY(d.window().isActiveWindow());
    QTRY_VERIFY(d.host.edit->hasFocus());
}

void tst_FloatIcon::clickDoesNotShowAWindowThatItHidByFocusLoss()
{
    Fixture d;
    d.host.settings.setAutoHideOnFocusLoss(true);
    QVERIFY(d.host.showActive());
    d.icon.show();
    d.press(d.centre());
    d.icon.activateWindow();
    QTRY_VERIFY(!d.window().isVisible());
    d.release(d.centre());
    QVERIFY(!d.window().isVisible());

    d.click();
    QVERIFY(d.window().isVisible());
}

void tst_FloatIcon::clickRestoresAMinimisedWindow()
{
    Fixture d;
    QVERIFY(d.host.showActive());
    d.window().showMinimized();
    d.click();
    QVERIFY(d.window().isVisible());
    QVERIFY(!d.window().isMinimized());
}

void tst_FloatIcon::doubleClickTogglesTwice()
{
    Fixture d;
    d.press(d.centre());
    d.release(d.centre());
    QVERIFY(d.window().isVisible());
    d.send(QEvent::MouseButtonDblClick, d.centre(), Qt::LeftButton, Qt::LeftButton);
    d.release(d.centre());
    QVERIFY(!d.window().isVisible());
    QCOMPARE(d.icon.pos(), QPoint(300, 200));
}

void tst_FloatIcon::clickStoresTheUnchangedPosition()
{
    Fixture d;
    QCOMPARE(d.storedPosition(), QPoint(-1, -1));
    d.press(d.centre());
    QCOMPARE(d.storedPosition(), QPoint(-1, -1));
    d.release(d.centre());
    QCOMPARE(d.storedPosition(), QPoint(300, 200));
    QCOMPARE(d.icon.pos(), QPoint(300, 200));
}

void tst_FloatIcon::eachClickStoresThePosition()
{
    Fixture d;
    d.click();
    d.host.settings.setFloatIconPos(QPoint(1, 2));
    d.click();
    QCOMPARE(d.storedPosition(), QPoint(300, 200));
}

void tst_FloatIcon::clickWithoutAWindowOnlyStoresThePosition()
{
    Fixture d;
    FloatIcon icon(&d.host.settings, &d.theme, nullptr);
    icon.move(40, 50);
    QTest::mouseClick(&icon, Qt::LeftButton);
    QCOMPARE(d.storedPosition(), QPoint(40, 50));
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::clickCannotShowAnotherWidget()
{
    Fixture d;
    QWidget other;
    FloatIcon icon(&d.host.settings, &d.theme, &other);
    QTest::mouseClick(&icon, Qt::LeftButton);
    QVERIFY(!other.isVisible());

    other.show();
    QTest::mouseClick(&icon, Qt::LeftButton);
    QVERIFY(!other.isVisible());
}

void tst_FloatIcon::dragMovesTheIconAndStoresItsPositionAtTheEnd()
{
    Fixture d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216));
    QCOMPARE(d.icon.pos(), QPoint(320, 201));
    d.moveTo(QPointF(410, 115));
    QCOMPARE(d.icon.pos(), QPoint(400, 100));
    QCOMPARE(d.storedPosition(), QPoint(-1, -1));
    d.release(QPointF(410, 115));
    QCOMPARE(d.icon.pos(), QPoint(400, 100));
    QCOMPARE(d.storedPosition(), QPoint(400, 100));
}

void tst_FloatIcon::onePixelIsADrag()
{
    Fixture d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(310, 216));
    d.release(QPointF(310, 216));
    QCOMPARE(d.icon.pos(), QPoint(300, 201));
    QCOMPARE(d.storedPosition(), QPoint(300, 201));
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::dragDoesNotToggle()
{
    Fixture d;
    QVERIFY(d.host.showActive());
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216));
    d.moveTo(QPointF(310, 215)); // back at the start, but still a drag
    d.release(QPointF(310, 215));
    QVERIFY(d.window().isVisible());
}

void tst_FloatIcon::clickAfterADragTogglesAgain()
{
    Fixture d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216));
    d.release(QPointF(330, 216));
    QVERIFY(!d.window().isVisible());
    d.click();
    QVERIFY(d.window().isVisible());
}

void tst_FloatIcon::dragMayLeaveTheScreen()
{
    Fixture d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(-25, -15));
    QCOMPARE(d.icon.pos(), QPoint(-35, -30));
    d.moveTo(QPointF(5010, 4015));
    d.release(QPointF(5010, 4015));
    QCOMPARE(d.icon.pos(), QPoint(5000, 4000));
    QCOMPARE(d.storedPosition(), QPoint(5000, 4000));
}

void tst_FloatIcon::dragRoundsToWholePixels()
{
    Fixture d;
    d.press(QPointF(309.6, 215.4));  // 310, 215
    d.moveTo(QPointF(320.5, 220.4)); // 321, 220
    QCOMPARE(d.icon.pos(), QPoint(311, 205));
}

void tst_FloatIcon::moveWithoutTheLeftButtonMovesNothing_data()
{
    QTest::addColumn<Qt::MouseButtons>("buttons");
    QTest::newRow("no button") << Qt::MouseButtons(Qt::NoButton);
    QTest::newRow("right") << Qt::MouseButtons(Qt::RightButton);
    QTest::newRow("middle") << Qt::MouseButtons(Qt::MiddleButton);
}

void tst_FloatIcon::moveWithoutTheLeftButtonMovesNothing()
{
    QFETCH(Qt::MouseButtons, buttons);
    Fixture d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216), buttons);
    QCOMPARE(d.icon.pos(), QPoint(300, 200));
    d.release(QPointF(330, 216));
    QVERIFY(d.window().isVisible()); // a click, not a drag
}

void tst_FloatIcon::otherButtonsDoNothing_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("middle") << Qt::MiddleButton;
    QTest::newRow("back") << Qt::BackButton;
}

void tst_FloatIcon::otherButtonsDoNothing()
{
    QFETCH(Qt::MouseButton, button);
    Fixture d;
    d.click(button);
    QVERIFY(!d.window().isVisible());
    QCOMPARE(d.storedPosition(), QPoint(-1, -1));
    QVERIFY(!QApplication::activePopupWidget());

    // Such a press does not disturb a drag with the left button.
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(320, 215));
    d.press(QPointF(321, 216), button);
    d.moveTo(QPointF(330, 215));
    QCOMPARE(d.icon.pos(), QPoint(320, 200));
}

void tst_FloatIcon::menuOffersTheOppositeState()
{
    Fixture d;
    QCOMPARE(d.useMenu(d.centre(), -1),
             (QStringList{u"Show main window"_s, QString(), u"Hide float icon"_s}));
    QCOMPARE(d.menuParent, &d.icon);

    QVERIFY(d.host.showActive());
    QCOMPARE(d.useMenu(d.centre(), -1),
             (QStringList{u"Hide main window"_s, QString(), u"Hide float icon"_s}));
}

void tst_FloatIcon::menuOpensAtThePointer()
{
    Fixture d;
    d.useMenu(QPointF(311.6, 215.4), -1);
    QCOMPARE(d.menuPosition, QPoint(312, 215));
}

void tst_FloatIcon::menuOpensOnlyOnTheRelease()
{
    Fixture d;
    d.press(d.centre(), Qt::RightButton);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(24, 24), d.centre().toPoint());
    QCoreApplication::sendEvent(&d.icon, &event);
    QCoreApplication::processEvents();
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_FloatIcon::menuTogglesTheWindow()
{
    Fixture d;
    d.useMenu(d.centre(), toggleEntry);
    QVERIFY(d.window().isVisible());
    QTRY_VERIFY(d.host.edit->hasFocus());
    d.useMenu(d.centre(), toggleEntry);
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::menuRestoresAMinimisedWindow()
{
    Fixture d;
    QVERIFY(d.host.showActive());
    d.window().showMinimized();
    QCOMPARE(d.useMenu(d.centre(), toggleEntry).constFirst(), u"Show main window"_s);
    QVERIFY(d.window().isVisible());
    QVERIFY(!d.window().isMinimized());
}

void tst_FloatIcon::menuHidesTheIcon()
{
    Fixture d;
    const QSignalSpy changes(&d.host.settings, &Settings::showFloatIconChanged);
    d.icon.show();
    d.useMenu(d.centre(), hideIconEntry);
    QCOMPARE(changes.count(), 1);
    QVERIFY(!d.host.settings.showFloatIcon());
    QVERIFY(d.icon.isVisible()); // the owner hides it when the setting changes
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::dismissedMenuDoesNothing()
{
    Fixture d;
    QVERIFY(!d.useMenu(d.centre(), -1).isEmpty());
    QVERIFY(!d.window().isVisible());
    QVERIFY(d.host.settings.showFloatIcon());
}

void tst_FloatIcon::menuWithoutAWindowOffersToShowIt()
{
    Fixture d;
    FloatIcon icon(&d.host.settings, &d.theme, nullptr);
    QStringList texts;
    QTimer poll;
    connect(&poll, &QTimer::timeout, &poll, [&] {
        if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
            poll.stop();
            texts.append(menu->actions().constFirst()->text());
            menu->setActiveAction(menu->actions().constFirst());
            QTest::keyClick(menu, Qt::Key_Return);
        }
    });
    poll.start(0);
    QTest::mouseRelease(&icon, Qt::RightButton);
    QCOMPARE(texts, QStringList{u"Show main window"_s});
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::rightClickStoresNoPosition()
{
    Fixture d;
    d.useMenu(d.centre(), -1);
    QCOMPARE(d.storedPosition(), QPoint(-1, -1));
}

void tst_FloatIcon::paintsADiscWithALetter_data()
{
    QTest::addColumn<QString>("theme");
    QTest::newRow("dark") << u"dark"_s;
    QTest::newRow("light") << u"light"_s;
}

void tst_FloatIcon::paintsADiscWithALetter()
{
    QFETCH(QString, theme);
    Fixture d;
    d.theme.setTheme(theme);
    for (const bool isStyled : {false, true}) {
        if (isStyled) {
            qApp->setStyleSheet(d.theme.styleSheet());
        }
        const QImage image = d.painted();
        qApp->setStyleSheet(QString());

        // The disc fills the icon, and the corners are transparent.
        QCOMPARE(image.pixelColor(24, 3), d.theme.accent());
        QCOMPARE(image.pixelColor(24, 44), d.theme.accent());
        QCOMPARE(image.pixelColor(3, 24), d.theme.accent());
        QCOMPARE(image.pixelColor(44, 24), d.theme.accent());
        for (const QPoint &outside : {QPoint(24, 1), QPoint(24, 46), QPoint(1, 24), QPoint(46, 24),
                                      QPoint(6, 6), QPoint(41, 41), QPoint(41, 6)}) {
            QCOMPARE(image.pixelColor(outside).alpha(), 0);
        }

        QRect letter;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == d.theme.bg()) {
                    letter |= QRect(x, y, 1, 1);
                }
            }
        }
        QVERIFY2(letter.height() >= 10 && letter.height() <= 24,
                 qPrintable(u"%1"_s.arg(letter.height())));
        QVERIFY(qAbs(letter.center().x() - 23) <= 1);
        QVERIFY(qAbs(letter.center().y() - 23) <= 3);
    }
}

void tst_FloatIcon::newPaletteRepaints()
{
    Fixture d;
    d.theme.setTheme(u"dark"_s);
    d.icon.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.icon));
    const EventCounter paints(&d.icon, QEvent::Paint);
    QCoreApplication::processEvents();
    const int before = paints.count;
    d.theme.setTheme(u"light"_s);
    QTRY_VERIFY(paints.count > before);
}

void tst_FloatIcon::withoutACompositorItIsMaskedRound()
{
    fakePlatform().isCompositing = false;
    Fixture d;
    d.theme.setTheme(u"dark"_s);
    const QImage whole = d.painted();
    d.icon.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.icon));

    // The mask is symmetric, and all of it is painted: nothing black shows.
    const QRegion mask = d.icon.mask();
    QCOMPARE(mask.boundingRect(), QRect(3, 3, 42, 42));
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 48; ++x) {
            const bool isShown = mask.contains(QPoint(x, y));
            QCOMPARE(mask.contains(QPoint(47 - x, y)), isShown);
            QCOMPARE(mask.contains(QPoint(x, 47 - y)), isShown);
            QVERIFY(!isShown || whole.pixelColor(x, y).alpha() == 255);
            // Of the disc, only the rim may be outside the mask.
            QVERIFY(isShown || std::hypot(x - 23.5, y - 23.5) > 20.5);
        }
    }
}

void tst_FloatIcon::maskFollowsTheCompositor()
{
    Fixture d;
    d.icon.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.icon));
    QVERIFY(d.icon.mask().isEmpty());

    const auto expose = [&] {
        QExposeEvent event(QRect(0, 0, 48, 48));
        QCoreApplication::sendEvent(d.icon.windowHandle(), &event);
    };
    fakePlatform().isCompositing = false;
    expose();
    QVERIFY(!d.icon.mask().isEmpty());
    fakePlatform().isCompositing = true;
    expose();
    QVERIFY(d.icon.mask().isEmpty());
}

void tst_FloatIcon::refusesTheFocus()
{
    Fixture d;
    QVERIFY(fakePlatform().windowsWithoutFocus.isEmpty());
    d.icon.show();
    QVERIFY(fakePlatform().windowsWithoutFocus.contains(d.icon.windowHandle()));
}

void tst_FloatIcon::comesBackWhenItsScreenGoes()
{
    Fixture d;
    d.icon.show();
    {
        const FakeScreen right(QRect(800, 0, 1280, 1000));
        d.press(d.centre());
        d.moveTo(QPointF(2024, 924));
        d.release(QPointF(2024, 924));
        QCOMPARE(d.icon.pos(), QPoint(2000, 900));
        d.host.settle();
        QCOMPARE(d.icon.pos(), QPoint(2000, 900));
    }
    QTRY_COMPARE(d.icon.pos(), QPoint(800 - 48, 800 - 48));
    QCOMPARE(d.storedPosition(), QPoint(2000, 900));
}

void tst_FloatIcon::returnsWithItsScreen()
{
    Fixture d;
    d.icon.show();
    const QRect geometry(-1280, 0, 1280, 1000);
    {
        const FakeScreen left(geometry);
        d.icon.move(-700, 100);
    }
    QTRY_COMPARE(d.icon.pos(), QPoint(0, 100));
    const FakeScreen left(geometry);
    QTRY_COMPARE(d.icon.pos(), QPoint(-700, 100));
}

void tst_FloatIcon::staysPartlyOffTheScreen()
{
    Fixture d;
    d.icon.move(-20, 770);
    {
        const FakeScreen right(QRect(800, 0, 1280, 1000));
        d.host.settle();
        QCOMPARE(d.icon.pos(), QPoint(-20, 770));
    }
    d.host.settle();
    QCOMPARE(d.icon.pos(), QPoint(-20, 770));
}

void tst_FloatIcon::dragAfterItCameBackCounts()
{
    Fixture d;
    d.icon.show();
    const QRect geometry(800, 0, 1280, 1000);
    {
        const FakeScreen right(geometry);
        d.icon.move(1000, 100);
    }
    QTRY_COMPARE(d.icon.pos(), QPoint(752, 100));
    d.press(d.centre());
    d.moveTo(d.centre() - QPointF(100, 0));
    d.release(d.centre());
    QCOMPARE(d.storedPosition(), QPoint(652, 100));

    const FakeScreen right(geometry);
    d.host.settle();
    QCOMPARE(d.icon.pos(), QPoint(652, 100));
}

void tst_FloatIcon::placesTheIcon_data()
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

void tst_FloatIcon::placesTheIcon()
{
    QFETCH(QPoint, stored);
    QTEST(floatIconPosition(stored, QRect(80, 40, 1920, 1000)), "expected");
}

void tst_FloatIcon::withoutAScreenItIsTheStoredPlace()
{
    QCOMPARE(floatIconPosition(QPoint(-1, -1), std::nullopt), QPoint(-1, -1));
}

VASKEL_TEST(tst_FloatIcon, QApplication)
#include "tst_FloatIcon.moc"
