// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FloatIcon.h"

#include "settings/ThemeManager.h"
#include "support/TestProgram.h"
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

#include <memory>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

/// The icon at a place of its own, over a real window.
class Desk
{
public:
    Desk() { icon.move(300, 200); }

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

    /// Opens the menu by a right click at a place, chooses the action of that index, or with -1
    /// dismisses it, and gives the texts, with an empty one for a separator.
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
            menuPlace = menu->pos();
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

    QPoint storedPlace() const { return desk.settings.floatIconPos(); }
    MainWindow &window() { return desk.window; }

    Window desk;
    ThemeManager theme;
    FloatIcon icon{&desk.settings, &theme, &desk.window};
    QPoint menuPlace;
    QPointer<QWidget> menuParent;
};

constexpr int toggleEntry = 0;
constexpr int hideIconEntry = 2;

/// Counts the paint events of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

class tst_FloatIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void isASmallToolWindowAboveAllOthers();
    void bearsTheProgramsName();

    void clickHidesAVisibleWindow();
    void clickShowsAHiddenWindowWithTheFocusInTheBox();
    void clickThatHidByFocusLossDoesNotShowAgain();
    void clickBringsAMinimisedWindowBack();
    void doubleClickTogglesTwice();
    void clickStoresTheUnchangedPlace();
    void clickStoresThePlaceEachTime();
    void clickWithoutAWindowOnlyStoresThePlace();
    void clickOverAnotherWidgetCannotShowIt();

    void dragMovesTheIconAndStoresItsPlaceAtTheEnd();
    void onePixelIsADrag();
    void dragDoesNotToggle();
    void clickAfterADragTogglesAgain();
    void dragIsNotHeldAtTheScreensEdge();
    void dragRoundsToWholePixels();
    void moveWithoutTheLeftButtonMovesNothing_data();
    void moveWithoutTheLeftButtonMovesNothing();
    void otherButtonsDoNothing_data();
    void otherButtonsDoNothing();

    void menuOffersWhatTheWindowIsNot();
    void menuOpensAtThePointer();
    void menuOpensOnTheReleaseAlone();
    void menuTogglesTheWindow();
    void menuBringsAMinimisedWindowBack();
    void menuSwitchesTheIconOff();
    void dismissedMenuDoesNothing();
    void menuWithoutAWindowOffersToShowIt();
    void rightClickStoresNoPlace();

    void paintsADiscWithALetter_data();
    void paintsADiscWithALetter();
    void newPaletteRepaints();

    void placesTheIcon_data();
    void placesTheIcon();
    void withoutAScreenItIsTheStoredPlace();
};

void tst_FloatIcon::isASmallToolWindowAboveAllOthers()
{
    const Desk d;
    QCOMPARE(d.icon.windowFlags(), Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    QVERIFY(d.icon.testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(d.icon.size(), QSize(48, 48));
    QVERIFY(d.icon.isHidden());
}

void tst_FloatIcon::bearsTheProgramsName()
{
    const Desk d;
    QCOMPARE(d.icon.accessibleName(), u"Vaskel"_s);
}

void tst_FloatIcon::clickHidesAVisibleWindow()
{
    Desk d;
    QVERIFY(d.desk.showActive());
    d.click();
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::clickShowsAHiddenWindowWithTheFocusInTheBox()
{
    Desk d;
    d.click();
    QVERIFY(d.window().isVisible());
    QTRY_VERIFY(d.window().isActiveWindow());
    QTRY_VERIFY(d.desk.edit->hasFocus());
}

void tst_FloatIcon::clickThatHidByFocusLossDoesNotShowAgain()
{
    Desk d;
    d.desk.settings.setAutoHideOnFocusLoss(true);
    QVERIFY(d.desk.showActive());
    d.icon.show();
    d.press(d.centre());
    d.icon.activateWindow();
    QTRY_VERIFY(!d.window().isVisible());
    d.release(d.centre());
    QVERIFY(!d.window().isVisible());

    d.click();
    QVERIFY(d.window().isVisible());
}

void tst_FloatIcon::clickBringsAMinimisedWindowBack()
{
    Desk d;
    QVERIFY(d.desk.showActive());
    d.window().showMinimized();
    d.click();
    QVERIFY(d.window().isVisible());
    QVERIFY(!d.window().isMinimized());
}

void tst_FloatIcon::doubleClickTogglesTwice()
{
    Desk d;
    d.press(d.centre());
    d.release(d.centre());
    QVERIFY(d.window().isVisible());
    d.send(QEvent::MouseButtonDblClick, d.centre(), Qt::LeftButton, Qt::LeftButton);
    d.release(d.centre());
    QVERIFY(!d.window().isVisible());
    QCOMPARE(d.icon.pos(), QPoint(300, 200));
}

void tst_FloatIcon::clickStoresTheUnchangedPlace()
{
    Desk d;
    QCOMPARE(d.storedPlace(), QPoint(-1, -1));
    d.press(d.centre());
    QCOMPARE(d.storedPlace(), QPoint(-1, -1));
    d.release(d.centre());
    QCOMPARE(d.storedPlace(), QPoint(300, 200));
    QCOMPARE(d.icon.pos(), QPoint(300, 200));
}

void tst_FloatIcon::clickStoresThePlaceEachTime()
{
    Desk d;
    d.click();
    d.desk.settings.setFloatIconPos(QPoint(1, 2));
    d.click();
    QCOMPARE(d.storedPlace(), QPoint(300, 200));
}

void tst_FloatIcon::clickWithoutAWindowOnlyStoresThePlace()
{
    Desk d;
    FloatIcon icon(&d.desk.settings, &d.theme, nullptr);
    icon.move(40, 50);
    QTest::mouseClick(&icon, Qt::LeftButton);
    QCOMPARE(d.storedPlace(), QPoint(40, 50));
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::clickOverAnotherWidgetCannotShowIt()
{
    Desk d;
    QWidget other;
    FloatIcon icon(&d.desk.settings, &d.theme, &other);
    QTest::mouseClick(&icon, Qt::LeftButton);
    QVERIFY(!other.isVisible());

    other.show();
    QTest::mouseClick(&icon, Qt::LeftButton);
    QVERIFY(!other.isVisible());
}

void tst_FloatIcon::dragMovesTheIconAndStoresItsPlaceAtTheEnd()
{
    Desk d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216));
    QCOMPARE(d.icon.pos(), QPoint(320, 201));
    d.moveTo(QPointF(410, 115));
    QCOMPARE(d.icon.pos(), QPoint(400, 100));
    QCOMPARE(d.storedPlace(), QPoint(-1, -1));
    d.release(QPointF(410, 115));
    QCOMPARE(d.icon.pos(), QPoint(400, 100));
    QCOMPARE(d.storedPlace(), QPoint(400, 100));
}

void tst_FloatIcon::onePixelIsADrag()
{
    Desk d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(310, 216));
    d.release(QPointF(310, 216));
    QCOMPARE(d.icon.pos(), QPoint(300, 201));
    QCOMPARE(d.storedPlace(), QPoint(300, 201));
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::dragDoesNotToggle()
{
    Desk d;
    QVERIFY(d.desk.showActive());
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216));
    d.moveTo(QPointF(310, 215)); // back at the start it is still a drag
    d.release(QPointF(310, 215));
    QVERIFY(d.window().isVisible());
}

void tst_FloatIcon::clickAfterADragTogglesAgain()
{
    Desk d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216));
    d.release(QPointF(330, 216));
    QVERIFY(!d.window().isVisible());
    d.click();
    QVERIFY(d.window().isVisible());
}

void tst_FloatIcon::dragIsNotHeldAtTheScreensEdge()
{
    Desk d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(-25, -15));
    QCOMPARE(d.icon.pos(), QPoint(-35, -30));
    d.moveTo(QPointF(5010, 4015));
    d.release(QPointF(5010, 4015));
    QCOMPARE(d.icon.pos(), QPoint(5000, 4000));
    QCOMPARE(d.storedPlace(), QPoint(5000, 4000));
}

void tst_FloatIcon::dragRoundsToWholePixels()
{
    Desk d;
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
    Desk d;
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(330, 216), buttons);
    QCOMPARE(d.icon.pos(), QPoint(300, 200));
    d.release(QPointF(330, 216));
    QVERIFY(d.window().isVisible()); // it was no drag
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
    Desk d;
    d.click(button);
    QVERIFY(!d.window().isVisible());
    QCOMPARE(d.storedPlace(), QPoint(-1, -1));
    QVERIFY(!QApplication::activePopupWidget());

    // Nor does such a press change what the left one has begun.
    d.press(QPointF(310, 215));
    d.moveTo(QPointF(320, 215));
    d.press(QPointF(321, 216), button);
    d.moveTo(QPointF(330, 215));
    QCOMPARE(d.icon.pos(), QPoint(320, 200));
}

void tst_FloatIcon::menuOffersWhatTheWindowIsNot()
{
    Desk d;
    QCOMPARE(d.useMenu(d.centre(), -1),
             (QStringList{u"Show main window"_s, QString(), u"Hide float icon"_s}));
    QCOMPARE(d.menuParent, &d.icon);

    QVERIFY(d.desk.showActive());
    QCOMPARE(d.useMenu(d.centre(), -1),
             (QStringList{u"Hide main window"_s, QString(), u"Hide float icon"_s}));
}

void tst_FloatIcon::menuOpensAtThePointer()
{
    Desk d;
    d.useMenu(QPointF(311.6, 215.4), -1);
    QCOMPARE(d.menuPlace, QPoint(312, 215));
}

void tst_FloatIcon::menuOpensOnTheReleaseAlone()
{
    Desk d;
    d.press(d.centre(), Qt::RightButton);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(24, 24), d.centre().toPoint());
    QCoreApplication::sendEvent(&d.icon, &event);
    QCoreApplication::processEvents();
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_FloatIcon::menuTogglesTheWindow()
{
    Desk d;
    d.useMenu(d.centre(), toggleEntry);
    QVERIFY(d.window().isVisible());
    QTRY_VERIFY(d.desk.edit->hasFocus());
    d.useMenu(d.centre(), toggleEntry);
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::menuBringsAMinimisedWindowBack()
{
    Desk d;
    QVERIFY(d.desk.showActive());
    d.window().showMinimized();
    QCOMPARE(d.useMenu(d.centre(), toggleEntry).constFirst(), u"Show main window"_s);
    QVERIFY(d.window().isVisible());
    QVERIFY(!d.window().isMinimized());
}

void tst_FloatIcon::menuSwitchesTheIconOff()
{
    Desk d;
    const QSignalSpy changes(&d.desk.settings, &Settings::showFloatIconChanged);
    d.icon.show();
    d.useMenu(d.centre(), hideIconEntry);
    QCOMPARE(changes.count(), 1);
    QVERIFY(!d.desk.settings.showFloatIcon());
    QVERIFY(d.icon.isVisible()); // its owner hears of the change and hides it
    QVERIFY(!d.window().isVisible());
}

void tst_FloatIcon::dismissedMenuDoesNothing()
{
    Desk d;
    QVERIFY(!d.useMenu(d.centre(), -1).isEmpty());
    QVERIFY(!d.window().isVisible());
    QVERIFY(d.desk.settings.showFloatIcon());
}

void tst_FloatIcon::menuWithoutAWindowOffersToShowIt()
{
    Desk d;
    FloatIcon icon(&d.desk.settings, &d.theme, nullptr);
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

void tst_FloatIcon::rightClickStoresNoPlace()
{
    Desk d;
    d.useMenu(d.centre(), -1);
    QCOMPARE(d.storedPlace(), QPoint(-1, -1));
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
    Desk d;
    d.theme.setTheme(theme);
    for (const bool isStyled : {false, true}) {
        if (isStyled) {
            qApp->setStyleSheet(d.theme.styleSheet());
        }
        const QImage image = d.painted();
        qApp->setStyleSheet(QString());

        // From the first to the last pixel of the disc, and nothing in the corners.
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
    Desk d;
    d.theme.setTheme(u"dark"_s);
    d.icon.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d.icon));
    const PaintCounter paints(&d.icon);
    QCoreApplication::processEvents();
    const int before = paints.count;
    d.theme.setTheme(u"light"_s);
    QTRY_VERIFY(paints.count > before);
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
