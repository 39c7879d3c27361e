// SPDX-License-Identifier: GPL-3.0-or-later
#include "Hotkey.h"

#include <X11/keysym.h>
#include <xcb/xtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

Hotkey::Hotkey()
    : m_connection(xcb_connect(nullptr, nullptr))
{
}

Hotkey::~Hotkey()
{
    xcb_disconnect(m_connection);
}

Hotkey::Clock::time_point Hotkey::press()
{
    const xcb_keycode_t control = keyOf(XK_Control_L);
    const xcb_keycode_t alt = keyOf(XK_Alt_L);
    const xcb_keycode_t space = keyOf(XK_space);
    fake(XCB_KEY_PRESS, control);
    fake(XCB_KEY_PRESS, alt);
    sync();
    const Clock::time_point moment = Clock::now();
    fake(XCB_KEY_PRESS, space);
    fake(XCB_KEY_RELEASE, space);
    fake(XCB_KEY_RELEASE, alt);
    fake(XCB_KEY_RELEASE, control);
    xcb_flush(m_connection);
    return moment;
}

Hotkey::Clock::time_point Hotkey::type(xcb_keysym_t symbol)
{
    const xcb_keycode_t key = keyOf(symbol);
    const Clock::time_point moment = Clock::now();
    fake(XCB_KEY_PRESS, key);
    fake(XCB_KEY_RELEASE, key);
    xcb_flush(m_connection);
    return moment;
}

void Hotkey::pressAndType(std::chrono::milliseconds delay, const std::string &letters)
{
    // Look the keys up first: a request to the server between two keys would delay them.
    std::vector<xcb_keycode_t> keys;
    keys.reserve(letters.size());
    for (const char letter : letters) {
        keys.push_back(keyOf(static_cast<xcb_keysym_t>(letter)));
    }
    press();
    std::this_thread::sleep_for(delay);
    for (const xcb_keycode_t key : keys) {
        fake(XCB_KEY_PRESS, key);
        fake(XCB_KEY_RELEASE, key);
    }
    xcb_flush(m_connection);
}

xcb_keycode_t Hotkey::keyOf(xcb_keysym_t symbol) const
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    auto *reply = xcb_get_keyboard_mapping_reply(
        m_connection, xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count), nullptr);
    if (!reply) {
        return 0;
    }
    xcb_keycode_t key = 0;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(reply);
    for (int i = 0; i < count && key == 0; ++i) {
        if (symbols[i * reply->keysyms_per_keycode] == symbol) {
            key = static_cast<xcb_keycode_t>(setup->min_keycode + i);
        }
    }
    std::free(reply);
    return key;
}

void Hotkey::fake(uint8_t type, xcb_keycode_t key)
{
    xcb_test_fake_input(m_connection, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

// Waits until the server has processed all requests.
void Hotkey::sync()
{
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}
