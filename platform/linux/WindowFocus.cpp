// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFocus.h"

#include "platform/linux/X11.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QObject>
#include <QWindow>

namespace platform {

namespace {

/// Drops the message by which a tray gives its focus to the icon. The icon takes no keys, but Qt
/// would regard it as the window with the focus.
class TrayFocusFilter : public QObject, private QAbstractNativeEventFilter
{
public:
    TrayFocusFilter(xcb_atom_t xembed, QObject *parent)
        : QObject(parent)
        , m_xembed(xembed)
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        constexpr quint8 sentBySomeClient = 0x80;
        constexpr quint32 focusIn = 4; // of the protocol XEMBED
        const auto *event = static_cast<const xcb_client_message_event_t *>(message);
        return (event->response_type & ~sentBySomeClient) == XCB_CLIENT_MESSAGE
               && event->type == m_xembed && event->data.data32[1] == focusIn;
    }

    xcb_atom_t m_xembed;
};

} // namespace

void refuseFocus(QWindow *window)
{
    // By the name of the platform: the offscreen one has a QX11Application, too, without a
    // connection.
    if (QGuiApplication::platformName() == QLatin1StringView("xcb")) {
        window->setFlag(Qt::WindowDoesNotAcceptFocus);
    }
}

void refuseFocusOfTray()
{
    if (xcb_connection_t *connection = x11Connection()) {
        new TrayFocusFilter(x11Atom(connection, "_XEMBED"), QCoreApplication::instance());
    }
}

} // namespace platform
