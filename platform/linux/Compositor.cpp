// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Compositor.h"

#include "platform/linux/X11.h"

#include <QByteArray>

#include <cstdlib>

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
    xcb_connection_t *connection = x11Connection();
    if (!connection) {
        return true;
    }
    const auto cookie =
        xcb_get_selection_owner(connection, x11Atom(connection, selectionOfCompositor()));
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace platform
