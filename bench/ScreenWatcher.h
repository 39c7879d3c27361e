// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <optional>

/// Watches through the X server when another program's window is shown and hidden. Only one program
/// at a time may open windows.
class ScreenWatcher
{
public:
    using Clock = std::chrono::steady_clock;

    struct ShownWindow
    {
        xcb_window_t id;
        Clock::time_point time;
    };

    /// Connects to the display named by DISPLAY; isConnected() tells whether that worked.
    ScreenWatcher();
    ~ScreenWatcher();
    ScreenWatcher(const ScreenWatcher &) = delete;
    ScreenWatcher &operator=(const ScreenWatcher &) = delete;

    bool isConnected() const;

    /// Waits until a large window is shown and painted, and returns it with the time when it was
    /// shown; nothing if that takes longer than the patience.
    std::optional<ShownWindow>
    waitForPaintedWindow(std::chrono::minutes patience = std::chrono::minutes(1));

    /// Waits until a hidden window is shown again; false after a minute.
    bool waitForShownWindow(xcb_window_t window);

    /// Waits until a shown window is painted; false after a minute.
    bool waitForPaint();

    /// Watches for that time, and returns when the last large area was painted; nothing if none
    /// was.
    std::optional<Clock::time_point> lastPaint(std::chrono::milliseconds duration);

    /// Asks the window to close, like its close button.
    void requestClose(xcb_window_t window);

    /// Waits until the window is hidden; false after a minute.
    bool waitForHiddenWindow(xcb_window_t window);

    /// Discards pending events of a program that has ended.
    void discardEvents();

private:
    xcb_generic_event_t *nextEvent(Clock::time_point deadline);
    xcb_atom_t atom(const char *name);

    xcb_connection_t *m_connection = nullptr;
    uint8_t m_damageNotify = 0;
};
