// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowActivation.h"

#include "platform/linux/WaylandSession.h"
#include "platform/linux/X11.h"

#include <QWidget>

namespace platform {

namespace {

// The source of the request, as EWMH numbers it.
constexpr quint32 userRequest = 2;

// Qt's own request has the time of the last key or click that this program has got, and the user
// may have typed elsewhere since.
void requestForUser(const QWidget *window)
{
    xcb_connection_t *connection = x11Connection();
    if (!connection) {
        return;
    }
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = xcb_window_t(window->winId());
    request.type = x11Atom(connection, "_NET_ACTIVE_WINDOW");
    request.data.data32[0] = userRequest;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, false, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&request));
    xcb_flush(connection);
}

// Qt reports a window as active for 400 ms longer than it has the focus.
bool hasFocus(const QWidget *window)
{
    xcb_connection_t *connection = x11Connection();
    if (!connection) {
        return window->isActiveWindow();
    }
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return reply && reply->focus == xcb_window_t(window->winId());
}

} // namespace

void prepareActivation(QWidget *window)
{
    if (!window->isVisible() || hasFocus(window)) {
        return;
    }
    // In a Wayland session, compositors only mark a visible window that asks for the focus, also
    // one of an X11 program. A window that is shown anew gets it.
    if (isWaylandSession()) {
        window->hide();
        return;
    }
    // Queued to follow Qt's own request, on which a window manager may only mark the window.
    QMetaObject::invokeMethod(
        window,
        [window] {
            if (window->isVisible()) {
                requestForUser(window);
            }
        },
        Qt::QueuedConnection);
}

} // namespace platform
