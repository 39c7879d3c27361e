// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: typist
//
// Opens a window, presses the hotkey and types letters after a set delay. For each line "DELAY
// LETTERS" of the standard input, with the delay in milliseconds, it takes the focus, presses
// Ctrl+Alt+Space, types the letters and answers with a line of those that its own window has got.
#include "Hotkey.h"

#include <poll.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;

struct Free
{
    void operator()(void *memory) const { std::free(memory); }
};
using Event = std::unique_ptr<xcb_generic_event_t, Free>;

/// The window that is active before the hotkey.
class Window
{
public:
    Window()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        m_window = xcb_generate_id(m_connection);
        const uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 300,
                          200, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                          XCB_CW_EVENT_MASK, &events);
        xcb_map_window(m_connection, m_window);
        xcb_flush(m_connection);
    }
    ~Window() { xcb_disconnect(m_connection); }
    Window(const Window &) = delete;
    Window &operator=(const Window &) = delete;

    bool waitForFocus() { return waitFor(XCB_FOCUS_IN); }
    bool waitForFocusLoss() { return waitFor(XCB_FOCUS_OUT); }

    /// The keys that have come so far.
    std::string takeLetters(const Hotkey &keyboard)
    {
        handleEvents();
        std::string letters;
        for (const xcb_keycode_t key : m_keys) {
            for (char letter = 'a'; letter <= 'z'; ++letter) {
                if (keyboard.keyOf(static_cast<xcb_keysym_t>(letter)) == key) {
                    letters += letter;
                }
            }
        }
        m_keys.clear();
        return letters;
    }

private:
    void handleEvents()
    {
        while (const Event event{xcb_poll_for_event(m_connection)}) {
            const auto type = event->response_type & 0x7f;
            const auto &focus = reinterpret_cast<const xcb_focus_in_event_t &>(*event);
            if (type == XCB_KEY_PRESS) {
                m_keys.push_back(reinterpret_cast<const xcb_key_press_event_t &>(*event).detail);
            } else if ((type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT)
                       && focus.mode != XCB_NOTIFY_MODE_GRAB && focus.mode != XCB_NOTIFY_MODE_UNGRAB
                       && focus.detail != XCB_NOTIFY_DETAIL_POINTER) {
                m_hasFocus = type == XCB_FOCUS_IN;
            }
        }
    }

    bool waitFor(int change)
    {
        const auto deadline = std::chrono::steady_clock::now() + patience;
        while (std::chrono::steady_clock::now() < deadline) {
            handleEvents();
            if (m_hasFocus == (change == XCB_FOCUS_IN)) {
                return true;
            }
            pollfd source{xcb_get_file_descriptor(m_connection), POLLIN, 0};
            poll(&source, 1, 100);
        }
        return false;
    }

    xcb_connection_t *m_connection;
    xcb_window_t m_window = 0;
    bool m_hasFocus = false;
    std::basic_string<xcb_keycode_t> m_keys;
};

} // namespace

int main()
{
    Window window;
    Hotkey keyboard;
    int delay = 0;
    for (std::string letters; std::cin >> delay >> letters;) {
        if (!window.waitForFocus()) {
            std::cout << "no focus" << std::endl;
            return 1;
        }
        window.takeLetters(keyboard);
        keyboard.pressAndType(std::chrono::milliseconds(delay), letters);
        if (!window.waitForFocusLoss()) {
            std::cout << "no window" << std::endl;
            return 1;
        }
        std::cout << '-' << window.takeLetters(keyboard) << std::endl;
    }
    return 0;
}
