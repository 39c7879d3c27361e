// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFocus.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QWindow>

class tst_WindowFocusContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void windowDoesNotGetTheFocus();
    void windowGetsTheFocusBesideATray();
};

void tst_WindowFocusContract::windowDoesNotGetTheFocus()
{
    QWindow window;
    window.setFlags(Qt::Tool | Qt::FramelessWindowHint);
    window.create();
    QVERIFY(world::mayHaveFocus(window));
    platform::refuseFocus(&window);
    QVERIFY(!world::mayHaveFocus(window));

    // Showing a window sets many of its properties.
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!world::mayHaveFocus(window));
    window.hide();
    window.show();
    QVERIFY(!world::mayHaveFocus(window));
}

void tst_WindowFocusContract::windowGetsTheFocusBesideATray()
{
    platform::refuseFocusOfTray();
    QWindow window;
    window.show();
    window.requestActivate();
    QTRY_COMPARE(QGuiApplication::focusWindow(), &window);
}

VASKEL_TEST(tst_WindowFocusContract, QGuiApplication)
#include "tst_WindowFocusContract.moc"
