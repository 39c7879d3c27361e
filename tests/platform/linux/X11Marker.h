// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/X11.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QWindow>

/// Sends a window a message without effect and notices when Qt gets it: by then Qt has got all
/// earlier events.
class X11Marker : public QAbstractNativeEventFilter
{
public:
    explicit X11Marker(const QWindow &window)
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = xcb_window_t(window.winId());
        message.type = m_type;
        xcb_send_event(m_connection, false, message.window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char *>(&message));
        xcb_flush(m_connection);
    }

    bool isNoticed() const { return m_isNoticed; }

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        constexpr quint8 sentBySomeClient = 0x80;
        const auto *event = static_cast<const xcb_client_message_event_t *>(message);
        if ((event->response_type & ~sentBySomeClient) == XCB_CLIENT_MESSAGE
            && event->type == m_type) {
            m_isNoticed = true;
        }
        return false;
    }

    xcb_connection_t *m_connection = platform::x11Connection();
    xcb_atom_t m_type = platform::x11Atom(m_connection, "_VASKEL_MARKER");
    bool m_isNoticed = false;
};
