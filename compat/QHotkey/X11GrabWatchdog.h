// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <thread>

#include <xcb/xcb.h>

/// Ends a grab of the keyboard by a hotkey after 300 ms, even if the program is busy and does not
/// do so itself. Its thread sleeps until the focus of the root window changes, as at the press of a
/// grabbed key.
class X11GrabWatchdog
{
public:
    /// The connection of the program, which outlives this object, and the name of its display, or
    /// null for the default one. Does nothing if it cannot connect there.
    X11GrabWatchdog(xcb_connection_t *program, const char *displayName);
    ~X11GrabWatchdog();
    Q_DISABLE_COPY_MOVE(X11GrabWatchdog)

private:
    void run();

    // The thread may use this connection too; XCB is safe for that.
    xcb_connection_t *m_program;
    xcb_connection_t *m_connection;
    int m_end = -1; ///< file descriptor of an event that ends the thread
    std::thread m_thread;
};
