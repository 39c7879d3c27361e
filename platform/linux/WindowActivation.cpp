// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowActivation.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QWidget>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace platform {

namespace {

// The source of the request, as EWMH numbers it.
constexpr quint32 userRequest = 2;

xcb_atom_t activeWindowAtom(xcb_connection_t *connection)
{
    const QByteArray name("_NET_ACTIVE_WINDOW");
    const auto cookie = xcb_intern_atom(connection, false, uint16_t(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

// Qt's own request has the time of the last key or click that this program has got, and the user
// may have typed elsewhere since.
void requestForUser(const QWidget *window)
{
    const auto *x11 = QGuiApplication::platformName() == QLatin1StringView("xcb")
                          ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>()
                          : nullptr;
    xcb_connection_t *connection = x11 ? x11->connection() : nullptr;
    if (!connection) {
        return;
    }
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = xcb_window_t(window->winId());
    request.type = activeWindowAtom(connection);
    request.data.data32[0] = userRequest;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, false, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&request));
    xcb_flush(connection);
}

} // namespace

void prepareActivation(QWidget *window)
{
    if (!window->isVisible() || window->isActiveWindow()) {
        return;
    }
    // On a Wayland session compositors only mark a window that asks for the focus, also one of an
    // X11 program.
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        window->hide();
        return;
    }
    // After Qt's request, which would otherwise only mark the window.
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
