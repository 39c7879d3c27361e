// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <optional>

/// Sees from outside, as the X server tells it, when another program's window shows and hides. At
/// most one program may open windows meanwhile.
class ScreenWatcher
{
public:
    /// Connects to the display of the environment; isConnected() tells whether that worked.
    ScreenWatcher();
    ~ScreenWatcher();
    ScreenWatcher(const ScreenWatcher &) = delete;
    ScreenWatcher &operator=(const ScreenWatcher &) = delete;

    bool isConnected() const;

    /// Waits until a large window is on the screen with its first picture painted, and returns it;
    /// nothing after a minute without one.
    std::optional<xcb_window_t> waitForPaintedWindow();

    /// Waits until a window that was hidden is back on the screen; false if it is not for a minute.
    bool waitForShownWindow(xcb_window_t window);

    /// Waits until a window that is on the screen is painted; false if it is not for a minute.
    bool waitForPicture();

    /// Asks the window's program to close it, as its close button would.
    void requestClose(xcb_window_t window);

    /// Waits until the window is off the screen; false if it stays for a minute.
    bool waitForHiddenWindow(xcb_window_t window);

    /// Forgets what is still under way from a program that has ended.
    void discardEvents();

private:
    using Clock = std::chrono::steady_clock;

    xcb_generic_event_t *nextEvent(Clock::time_point deadline);
    xcb_atom_t atom(const char *name);

    xcb_connection_t *m_connection = nullptr;
    uint8_t m_damageNotify = 0;
};
