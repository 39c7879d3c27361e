// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ManagementIcon.h"

#include "support/EventCounter.h"
#include "support/TestProgram.h"
#include "ui/VaskelIcon.h"

#include <QAccessible>
#include <QEnterEvent>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr QPoint rimPoint(16, 3); // inside the ellipse, outside the icon

void sendEnter(QWidget &widget)
{
    const QPointF centre = widget.rect().center();
    QEnterEvent event(centre, centre, centre);
    QCoreApplication::sendEvent(&widget, &event);
}

void sendLeave(QWidget &widget)
{
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(&widget, &event);
}

QImage painted(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

int rimAlpha(QWidget &widget)
{
    return painted(widget).pixelColor(rimPoint).alpha();
}

} // namespace

class tst_ManagementIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasItsFixedSizeAndThePointingHand();
    void leftClickEmitsOnce();
    void otherButtonsNeitherPressNorClick();
    void rightReleaseEndsTheLeftPress();
    void releaseOutsideEmitsNothing_data();
    void releaseOutsideEmitsNothing();
    void leavingCancelsThePress();
    void releaseWithoutPressEmitsNothing();
    void mouseEventsReachTheBaseClass();
    void showsItsStateBehindTheIcon();
    void hoverIsAGreyEllipse();
    void eachChangeOfStateRepaints();
    void paintsTheIconInItsSquare();
    void isPressedByKeyboard_data();
    void isPressedByKeyboard();
    void clickDoesNotTakeTheFocus();
    void showsThatItHasTheFocus();
    void isAButtonToScreenReaders();
};

void tst_ManagementIcon::hasItsFixedSizeAndThePointingHand()
{
    const ManagementIcon icon;
    QCOMPARE(icon.minimumSize(), QSize(32, 32));
    QCOMPARE(icon.maximumSize(), QSize(32, 32));
    QCOMPARE(icon.cursor().shape(), Qt::PointingHandCursor);
}

void tst_ManagementIcon::leftClickEmitsOnce()
{
    ManagementIcon icon;
    const QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    QTest::mousePress(&icon, Qt::LeftButton);
    QCOMPARE(clicked.count(), 0);
    QTest::mouseRelease(&icon, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
}

void tst_ManagementIcon::otherButtonsNeitherPressNorClick()
{
    ManagementIcon icon;
    const QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    QTest::mousePress(&icon, Qt::RightButton);
    QCOMPARE(rimAlpha(icon), 0);
    QTest::mouseRelease(&icon, Qt::RightButton);
    QTest::mouseClick(&icon, Qt::MiddleButton);
    QCOMPARE(clicked.count(), 0);
}

void tst_ManagementIcon::rightReleaseEndsTheLeftPress()
{
    ManagementIcon icon;
    const QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    QTest::mousePress(&icon, Qt::LeftButton);
    QTest::mouseRelease(&icon, Qt::RightButton);
    QTest::mouseRelease(&icon, Qt::LeftButton);
    QCOMPARE(clicked.count(), 0);
}

void tst_ManagementIcon::releaseOutsideEmitsNothing_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<int>("clicks");
    QTest::newRow("first pixel is inside") << QPoint(0, 0) << 1;
    QTest::newRow("last pixel is inside") << QPoint(31, 31) << 1;
    QTest::newRow("left of it is outside") << QPoint(-1, 16) << 0;
    QTest::newRow("right of it is outside") << QPoint(32, 16) << 0;
    QTest::newRow("above it is outside") << QPoint(16, -1) << 0;
    QTest::newRow("below it is outside") << QPoint(16, 32) << 0;
}

void tst_ManagementIcon::releaseOutsideEmitsNothing()
{
    QFETCH(QPoint, position);
    QFETCH(int, clicks);

    ManagementIcon icon;
    const QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    QTest::mousePress(&icon, Qt::LeftButton, {}, QPoint(16, 16));
    QTest::mouseRelease(&icon, Qt::LeftButton, {}, position);
    QCOMPARE(clicked.count(), clicks);
    QCOMPARE(rimAlpha(icon), 0);
}

void tst_ManagementIcon::leavingCancelsThePress()
{
    ManagementIcon icon;
    const QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    sendEnter(icon);
    QTest::mousePress(&icon, Qt::LeftButton);
    sendLeave(icon);
    QCOMPARE(rimAlpha(icon), 0);
    QTest::mouseRelease(&icon, Qt::LeftButton);
    QCOMPARE(clicked.count(), 0);
}

void tst_ManagementIcon::releaseWithoutPressEmitsNothing()
{
    ManagementIcon icon;
    const QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    QTest::mouseRelease(&icon, Qt::LeftButton);
    QCOMPARE(clicked.count(), 0);
}

void tst_ManagementIcon::mouseEventsReachTheBaseClass()
{
    // QWidget ignores mouse buttons, so the parent gets them.
    ManagementIcon icon;
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, QPointF(16, 16), QPointF(16, 16), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&icon, &event);
        QVERIFY(!event.isAccepted());
    }
}

void tst_ManagementIcon::showsItsStateBehindTheIcon()
{
    ManagementIcon icon;
    QCOMPARE(rimAlpha(icon), 0);
    sendEnter(icon);
    QCOMPARE(rimAlpha(icon), 45);
    QTest::mousePress(&icon, Qt::LeftButton);
    QCOMPARE(rimAlpha(icon), 76);
    QTest::mouseRelease(&icon, Qt::LeftButton);
    QCOMPARE(rimAlpha(icon), 45);
    sendLeave(icon);
    QCOMPARE(rimAlpha(icon), 0);

    QTest::mousePress(&icon, Qt::LeftButton);
    QCOMPARE(rimAlpha(icon), 76);
}

void tst_ManagementIcon::hoverIsAGreyEllipse()
{
    ManagementIcon icon;
    sendEnter(icon);
    const QImage image = painted(icon);
    const QColor grey = image.pixelColor(rimPoint);
    QVERIFY2(qAbs(grey.red() - 128) <= 3 && grey.red() == grey.green() && grey.red() == grey.blue(),
             qPrintable(grey.name()));

    QCOMPARE(image.pixelColor(16, 0).alpha(), 0); // the outermost pixel is transparent
    QVERIFY(image.pixelColor(16, 1).alpha() > 0);
    QVERIFY(image.pixelColor(30, 16).alpha() > 0);
    QCOMPARE(image.pixelColor(31, 16).alpha(), 0);
    QCOMPARE(image.pixelColor(4, 4).alpha(), 0); // a corner of the square, outside the ellipse
}

void tst_ManagementIcon::eachChangeOfStateRepaints()
{
    ManagementIcon icon;
    icon.show();
    QVERIFY(QTest::qWaitForWindowExposed(&icon));
    EventCounter paints(&icon, QEvent::Paint);

    const auto repaints = [&paints](const auto &change) {
        paints.count = 0;
        change();
        return QTest::qWaitFor([&paints] { return paints.count > 0; }, 1000);
    };
    QVERIFY(repaints([&icon] { sendEnter(icon); }));
    QVERIFY(repaints([&icon] { QTest::mousePress(&icon, Qt::LeftButton); }));
    QVERIFY(repaints([&icon] { QTest::mouseRelease(&icon, Qt::LeftButton); }));
    QVERIFY(repaints([&icon] { sendLeave(icon); }));
}

void tst_ManagementIcon::paintsTheIconInItsSquare()
{
    ManagementIcon icon;
    const QImage image = painted(icon);
    QVERIFY(image.pixelColor(16, 16).alpha() > 0);

    QImage expected(image.size(), image.format());
    expected.fill(Qt::transparent);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    vaskelIcon().paint(&painter, QRect(5, 5, 22, 22));
    painter.end();
    QCOMPARE(image, expected);
}

void tst_ManagementIcon::isPressedByKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("clicks");
    QTest::newRow("Space") << Qt::Key_Space << 1;
    QTest::newRow("Return") << Qt::Key_Return << 1;
    QTest::newRow("Enter") << Qt::Key_Enter << 1;
    QTest::newRow("a letter") << Qt::Key_A << 0;
}

void tst_ManagementIcon::isPressedByKeyboard()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const int, clicks);
    ManagementIcon icon;
    QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    QTest::keyClick(&icon, key);
    QCOMPARE(clicked.size(), clicks);
}

void tst_ManagementIcon::clickDoesNotTakeTheFocus()
{
    const ManagementIcon icon;
    QCOMPARE(icon.focusPolicy(), Qt::TabFocus);
}

void tst_ManagementIcon::showsThatItHasTheFocus()
{
    QWidget window;
    window.resize(100, 100);
    ManagementIcon icon(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(window.windowHandle()));
    const QImage without = painted(icon);
    icon.setFocus(Qt::TabFocusReason);
    window.setAttribute(Qt::WA_KeyboardFocusChange);
    QVERIFY(painted(icon) != without);
}

void tst_ManagementIcon::isAButtonToScreenReaders()
{
    ManagementIcon icon;
    QSignalSpy clicked(&icon, &ManagementIcon::clicked);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&icon);
    QCOMPARE(interface->role(), QAccessible::Button);
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicked.size(), 1);
    interface->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(clicked.size(), 1);
}

VASKEL_TEST(tst_ManagementIcon, QApplication)
#include "tst_ManagementIcon.moc"
