// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11GrabWatchdog.h"

#include "LongestHold.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

struct Free
{
    void operator()(void *data) const { std::free(data); }
};
using Event = std::unique_ptr<xcb_generic_event_t, Free>;

/// Follows the focus events of the root window, on which clients grab their hotkeys.
class GrabState
{
public:
    void handle(const xcb_generic_event_t &event)
    {
        const auto &change = reinterpret_cast<const xcb_focus_in_event_t &>(event);
        const bool isVirtual = change.detail == XCB_NOTIFY_DETAIL_VIRTUAL
                               || change.detail == XCB_NOTIFY_DETAIL_NONLINEAR_VIRTUAL;
        if (event.response_type == XCB_FOCUS_IN && change.mode == XCB_NOTIFY_MODE_GRAB
            && !isVirtual) {
            m_deadline = Clock::now() + longestHold;
        } else if (event.response_type == XCB_FOCUS_OUT && change.mode == XCB_NOTIFY_MODE_UNGRAB) {
            reset();
        }
    }

    /// For poll(): milliseconds, or -1 without a grab.
    int remainingTime() const
    {
        if (m_deadline == never) {
            return -1;
        }
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
        return int(std::max(rest, 0ms).count());
    }

    bool hasExpired() const { return Clock::now() >= m_deadline; }
    void reset() { m_deadline = never; }

private:
    static constexpr auto never = Clock::time_point::max();

    Clock::time_point m_deadline = never;
};

} // namespace

X11GrabWatchdog::X11GrabWatchdog(xcb_connection_t *program, const char *displayName)
    : m_program(program)
    , m_connection(xcb_connect(displayName, nullptr))
    , m_end(eventfd(0, EFD_CLOEXEC))
{
    if (xcb_connection_has_error(m_connection) || m_end == -1) {
        return;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    const quint32 events = XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(m_connection, root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(m_connection);
    m_thread = std::thread(&X11GrabWatchdog::run, this);
}

X11GrabWatchdog::~X11GrabWatchdog()
{
    if (m_thread.joinable()) {
        eventfd_write(m_end, 1);
        m_thread.join();
    }
    if (m_end != -1) {
        close(m_end);
    }
    xcb_disconnect(m_connection);
}

void X11GrabWatchdog::run()
{
    GrabState grab;
    std::array<pollfd, 2> sources{pollfd{xcb_get_file_descriptor(m_connection), POLLIN, 0},
                                  pollfd{m_end, POLLIN, 0}};
    while (sources[1].revents == 0 && !xcb_connection_has_error(m_connection)) {
        while (const Event event{xcb_poll_for_event(m_connection)}) {
            grab.handle(*event);
        }
        if (grab.hasExpired()) {
            xcb_ungrab_keyboard(m_program, XCB_CURRENT_TIME);
            xcb_flush(m_program);
            grab.reset();
        }
        poll(sources.data(), sources.size(), grab.remainingTime());
    }
}
