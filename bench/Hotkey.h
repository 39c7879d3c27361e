// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <chrono>

/// Strikes Ctrl+Alt+Space, Vaskel's hotkey unless it is set otherwise. The keys come from the
/// keyboard as far as any program can tell.
class Hotkey
{
public:
    using Clock = std::chrono::steady_clock;

    /// Connects to the display of the environment.
    Hotkey();
    ~Hotkey();
    Hotkey(const Hotkey &) = delete;
    Hotkey &operator=(const Hotkey &) = delete;

    /// Presses and releases the keys, and returns the moment before the last one went down.
    Clock::time_point strike();

private:
    xcb_keycode_t keyOf(xcb_keysym_t symbol) const;
    void fake(uint8_t type, xcb_keycode_t key);
    void wait();

    xcb_connection_t *m_connection = nullptr;
};
