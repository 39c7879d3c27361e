// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace platform {

/// Deletes a reply of XCB.
struct XcbFree
{
    void operator()(void *reply) const { std::free(reply); }
};

/// Owns a reply of XCB.
template <typename Reply> using XcbReply = std::unique_ptr<Reply, XcbFree>;

/// The connection of the program as a client of X11; null on another window system.
xcb_connection_t *x11Connection();

/// The atom of this name, which is made if there is none yet. Waits for the server the first time.
/// XCB_ATOM_NONE if the server does not answer.
xcb_atom_t x11Atom(xcb_connection_t *connection, const QByteArray &name);

} // namespace platform
