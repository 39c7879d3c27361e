// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Compositor.h"

#include "platform/linux/X11Atom.h"

#include <QByteArray>
#include <QGuiApplication>

#include <cstdlib>
#include <memory>

namespace platform {

namespace {

// Each compositor owns this selection of its screen, by the window manager specification (EWMH).
QByteArray selectionOfCompositor()
{
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen)) {
        std::free(host);
    }
    return "_NET_WM_CM_S" + QByteArray::number(screen);
}

} // namespace

bool isCompositing()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t *connection = x11 ? x11->connection() : nullptr;
    if (!connection) {
        return true;
    }
    const auto cookie =
        xcb_get_selection_owner(connection, x11Atom(connection, selectionOfCompositor()));
    const std::unique_ptr<xcb_get_selection_owner_reply_t, XcbFree> reply(
        xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace platform
