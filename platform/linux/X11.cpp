// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/X11.h"

#include <QGuiApplication>
#include <QHash>

namespace platform {

xcb_connection_t *x11Connection()
{
    if (QGuiApplication::platformName() != QLatin1StringView("xcb")) {
        return nullptr;
    }
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t x11Atom(xcb_connection_t *connection, const QByteArray &name)
{
    // Atoms are kept: they last as long as the server, and each show of the window would wait for
    // the answer.
    static QHash<QByteArray, xcb_atom_t> atoms;
    if (const auto known = atoms.constFind(name); known != atoms.cend()) {
        return *known;
    }
    const auto cookie = xcb_intern_atom(connection, false, uint16_t(name.size()), name.constData());
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? *atoms.insert(name, reply->atom) : xcb_atom_t(XCB_ATOM_NONE);
}

} // namespace platform
