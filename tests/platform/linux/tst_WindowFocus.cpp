// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFocus.h"

#include "platform/linux/X11Atom.h"
#include "support/TestProgram.h"

#include <QAbstractNativeEventFilter>
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

constexpr quint32 windowActivate = 1; // of the protocol XEMBED
constexpr quint32 focusIn = 4;

void sendXembed(const QWindow &window, quint32 kind)
{
    xcb_connection_t *connection = platform::x11Connection();
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = xcb_window_t(window.winId());
    message.type = platform::x11Atom(connection, "_XEMBED");
    message.data.data32[1] = kind;
    xcb_send_event(connection, false, message.window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection);
}

/// Notices the message before Qt does.
class Notice : public QAbstractNativeEventFilter
{
public:
    Notice() { QCoreApplication::instance()->installNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const xcb_client_message_event_t *>(message);
        isNoticed = isNoticed
                    || ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE
                        && event->type == platform::x11Atom(platform::x11Connection(), "_XEMBED")
                        && event->data.data32[1] == windowActivate);
        return false;
    }

    bool isNoticed = false;
};

} // namespace

void tst_WindowFocus::trayGivesTheIconNoFocus()
{
    QWindow window;
    window.show();
    window.requestActivate();
    QTRY_COMPARE(QGuiApplication::focusWindow(), &window);
    QWindow icon;
    icon.create();

    sendXembed(icon, focusIn);
    QTRY_COMPARE(QGuiApplication::focusWindow(), &icon);
    sendXembed(window, focusIn);
    QTRY_COMPARE(QGuiApplication::focusWindow(), &window);

    platform::refuseFocusOfTray();
    sendXembed(icon, focusIn);
    const Notice notice;
    sendXembed(icon, windowActivate);
    QTRY_VERIFY(notice.isNoticed); // and the other one before
    QCOMPARE(QGuiApplication::focusWindow(), &window);
}

VASKEL_TEST(tst_WindowFocus, QGuiApplication)
#include "tst_WindowFocus.moc"
