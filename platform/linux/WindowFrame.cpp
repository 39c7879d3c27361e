// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFrame.h"

#include "platform/linux/X11.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QObject>
#include <QSet>

namespace platform {

namespace {

/// Drops the X server's own ConfigureNotify of a window that is not shown yet. Its position may be
/// relative to a frame, so Qt would ask the server for the position at that moment. A window
/// manager sends another event with the position on the screen.
class FrameFilter : public QObject, private QAbstractNativeEventFilter
{
public:
    FrameFilter(xcb_connection_t *connection, QObject *parent)
        : QObject(parent)
        , m_connection(connection)
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        // Events sent by other clients have the highest bit set and do not match.
        switch (static_cast<const xcb_generic_event_t *>(message)->response_type) {
        case XCB_CONFIGURE_NOTIFY:
            return ignores(static_cast<const xcb_configure_notify_event_t *>(message)->window);
        case XCB_EXPOSE:
            show(static_cast<const xcb_expose_event_t *>(message)->window);
            return false;
        case XCB_UNMAP_NOTIFY:
            m_shown.remove(static_cast<const xcb_unmap_notify_event_t *>(message)->window);
            return false;
        default:
            return false;
        }
    }

    bool ignores(xcb_window_t window)
    {
        const bool isHidden = isOwn(window) && !m_shown.contains(window);
        if (isHidden) {
            m_ignored.insert(window);
        }
        return isHidden;
    }

    // Not the root window, whose event tells Qt of new screens.
    bool isOwn(xcb_window_t window) const
    {
        const xcb_setup_t *setup = xcb_get_setup(m_connection);
        return (window & ~setup->resource_id_mask) == setup->resource_id_base;
    }

    void show(xcb_window_t window)
    {
        m_shown.insert(window);
        if (m_ignored.remove(window)) {
            tellGeometry(window);
        }
    }

    // Tells Qt the present geometry of the window in place of the dropped events.
    void tellGeometry(xcb_window_t window) const
    {
        const auto geometryCookie = xcb_get_geometry(m_connection, window);
        const XcbReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(m_connection, geometryCookie, nullptr));
        if (!geometry) {
            return;
        }
        const auto placeCookie =
            xcb_translate_coordinates(m_connection, window, geometry->root, 0, 0);
        const XcbReply<xcb_translate_coordinates_reply_t> place(
            xcb_translate_coordinates_reply(m_connection, placeCookie, nullptr));
        if (!place) {
            return;
        }
        union {
            xcb_configure_notify_event_t event;
            char bytes[32]; // of each event in the protocol
        } message = {};
        message.event.response_type = XCB_CONFIGURE_NOTIFY;
        message.event.event = window;
        message.event.window = window;
        message.event.x = place->dst_x;
        message.event.y = place->dst_y;
        message.event.width = geometry->width;
        message.event.height = geometry->height;
        xcb_send_event(m_connection, false, window, XCB_EVENT_MASK_STRUCTURE_NOTIFY, message.bytes);
        xcb_flush(m_connection);
    }

    xcb_connection_t *m_connection;
    QSet<xcb_window_t> m_shown;
    QSet<xcb_window_t> m_ignored;
};

} // namespace

void ignoreMovesOfHiddenWindows()
{
    if (xcb_connection_t *connection = x11Connection()) {
        new FrameFilter(connection, QCoreApplication::instance());
    }
}

} // namespace platform
