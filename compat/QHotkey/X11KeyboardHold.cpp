// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11KeyboardHold.h"

#include "ExpectedFocus.h"
#include "LongestHold.h"
#include "X11Connection.h"

#include <QGuiApplication>

#include <chrono>
#include <cstdlib>
#include <memory>

namespace {

using namespace std::chrono_literals;

constexpr auto focusInterval = 1ms; // between two checks of the focus

// focusWindow() is set only after Qt has handled the focus event; earlier, an input method would
// miss the first keys. Qt also reports a window that it has just hidden, so ask the server, too.
bool hasFocus(xcb_connection_t *display)
{
    if (!QGuiApplication::focusWindow()) {
        return false;
    }
    const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> reply(
        xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr), &std::free);
    const xcb_setup_t *setup = xcb_get_setup(display);
    return !reply || (reply->focus & ~setup->resource_id_mask) == setup->resource_id_base;
}

} // namespace

X11KeyboardHold::X11KeyboardHold()
{
    m_timer.setInterval(focusInterval);
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &X11KeyboardHold::endWithFocus);
}

X11KeyboardHold::~X11KeyboardHold()
{
    end();
}

void X11KeyboardHold::begin(xcb_timestamp_t pressTime)
{
    m_pressTime = pressTime;
    m_deadline.setRemainingTime(longestHold);
}

void X11KeyboardHold::endWithFocus()
{
    xcb_connection_t *display = x11Connection();
    if (!m_pressTime || !display) {
        return;
    }
    if (!expectsFocus() || m_deadline.hasExpired() || hasFocus(display)) {
        end();
    } else {
        m_timer.start();
    }
}

// The grab of the press would otherwise last until the key is up. Further keys would be lost until
// then, and the active window would lose the focus.
void X11KeyboardHold::end()
{
    m_timer.stop();
    xcb_connection_t *display = x11Connection();
    if (m_pressTime && display) {
        // The time of the press leaves later grabs alone.
        xcb_ungrab_keyboard(display, *m_pressTime);
        xcb_flush(display);
    }
    m_pressTime.reset();
}
