// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowActivation.h"

#include "platform/linux/X11.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QWidget>

class tst_WindowActivation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hidesAnInactiveWindowOnWayland_data();
    void hidesAnInactiveWindowOnWayland();
    void asksTheServerForTheFocus();
};

void tst_WindowActivation::init()
{
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("XDG_SESSION_TYPE", "wayland");
}

void tst_WindowActivation::hidesAnInactiveWindowOnWayland_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("a client of the compositor")
        << QByteArray("WAYLAND_DISPLAY") << QByteArray("wayland-0");
    QTest::newRow("a service of the user")
        << QByteArray("XDG_SESSION_TYPE") << QByteArray("wayland");
}

void tst_WindowActivation::hidesAnInactiveWindowOnWayland()
{
    QFETCH(const QByteArray, variable);
    QFETCH(const QByteArray, value);
    qunsetenv("XDG_SESSION_TYPE");
    qputenv(variable.constData(), value);
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    platform::prepareActivation(&window);
    QVERIFY(window.isVisible());

    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_VERIFY(!window.isActiveWindow());
    // The server may move the focus later than Qt reports it.
    QTRY_VERIFY((platform::prepareActivation(&window), !window.isVisible()));
    platform::prepareActivation(&window);
    QVERIFY(!window.isVisible());
}

void tst_WindowActivation::asksTheServerForTheFocus()
{
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    xcb_set_input_focus(platform::x11Connection(), XCB_INPUT_FOCUS_NONE, XCB_NONE,
                        XCB_CURRENT_TIME);
    QVERIFY(window.isActiveWindow()); // Qt has not learned of it yet
    platform::prepareActivation(&window);
    QVERIFY(!window.isVisible());
}

VASKEL_TEST(tst_WindowActivation, QApplication)
#include "tst_WindowActivation.moc"
