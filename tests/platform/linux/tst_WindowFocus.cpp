// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFocus.h"

#include "platform/linux/X11.h"
#include "platform/linux/X11Marker.h"
#include "support/TestProgram.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

class tst_WindowFocus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trayGivesTheIconNoFocus();
};

namespace {

void sendFocusIn(const QWindow &window)
{
    xcb_connection_t *connection = platform::x11Connection();
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = xcb_window_t(window.winId());
    message.type = platform::x11Atom(connection, "_XEMBED");
    message.data.data32[1] = 4; // the protocol's number of "focus in"
    xcb_send_event(connection, false, message.window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection);
}

} // namespace

void tst_WindowFocus::trayGivesTheIconNoFocus()
{
    QWindow window;
    window.show();
    window.requestActivate();
    QTRY_COMPARE(QGuiApplication::focusWindow(), &window);
    QWindow icon;
    icon.create();

    sendFocusIn(icon);
    QTRY_COMPARE(QGuiApplication::focusWindow(), &icon);
    sendFocusIn(window);
    QTRY_COMPARE(QGuiApplication::focusWindow(), &window);

    platform::refuseFocusOfTray();
    sendFocusIn(icon);
    const X11Marker marker(icon);
    QTRY_VERIFY(marker.isNoticed());
    QCOMPARE(QGuiApplication::focusWindow(), &window);
}

VASKEL_TEST(tst_WindowFocus, QGuiApplication)
#include "tst_WindowFocus.moc"
