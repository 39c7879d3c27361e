// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <string>

/// Presses Ctrl+Alt+Space, the default hotkey of Vaskel. Sends the keys by XTEST, so other programs
/// take them for those of the keyboard.
class Hotkey
{
public:
    using Clock = std::chrono::steady_clock;

    /// Connects to the display named by DISPLAY.
    Hotkey();
    ~Hotkey();
    Hotkey(const Hotkey &) = delete;
    Hotkey &operator=(const Hotkey &) = delete;

    /// Presses and releases the keys; returns the time just before the last press.
    Clock::time_point press();

    /// Presses and releases the key of this symbol; returns the time just before.
    Clock::time_point type(xcb_keysym_t symbol);

    /// Presses and releases the hotkey, and after the delay the keys of these lower-case letters.
    void pressAndType(std::chrono::milliseconds delay, const std::string &letters);

    /// The key of this symbol, or 0.
    xcb_keycode_t keyOf(xcb_keysym_t symbol) const;

private:
    void fake(uint8_t type, xcb_keycode_t key);
    void sync();

    xcb_connection_t *m_connection = nullptr;
};
