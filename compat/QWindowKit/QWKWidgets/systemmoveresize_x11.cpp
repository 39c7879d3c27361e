// SPDX-License-Identifier: GPL-3.0-or-later
#include "systemmoveresize.h"

#include <QGuiApplication>
#include <QWindow>

#include <cstdlib>
#include <memory>
#include <string_view>

#include <xcb/xcb.h>

namespace QWK {

namespace {

// _NET_WM_MOVERESIZE_CANCEL of the window manager specification (EWMH).
constexpr uint32_t moveResizeCancel = 11;

struct Free
{
    void operator()(void *data) const { std::free(data); }
};

xcb_atom_t atom(xcb_connection_t *connection, std::string_view name)
{
    const auto cookie = xcb_intern_atom(connection, true, uint16_t(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

xcb_window_t rootOf(xcb_connection_t *connection, xcb_window_t window)
{
    const auto cookie = xcb_query_tree(connection, window);
    const std::unique_ptr<xcb_query_tree_reply_t, Free> reply(
        xcb_query_tree_reply(connection, cookie, nullptr));
    return reply ? reply->root : xcb_window_t(XCB_WINDOW_NONE);
}

} // namespace

void cancelSystemMoveResize(QWindow *window)
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) {
        return;
    }
    xcb_connection_t *connection = x11->connection();
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = xcb_window_t(window->winId());
    message.type = atom(connection, "_NET_WM_MOVERESIZE");
    message.data.data32[2] = moveResizeCancel;
    xcb_send_event(connection, false, rootOf(connection, message.window),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection);
}

} // namespace QWK
