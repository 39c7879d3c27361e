// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScreenWatcher.h"

#include <poll.h>
#include <xcb/damage.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>

namespace {

constexpr auto kPatience = std::chrono::minutes(1);

// Toolkits open invisible helper windows of a few pixels, and the program's small floating icon is
// painted before the main window.
constexpr int minimumWidth = 100;

struct Free
{
    void operator()(void *memory) const { std::free(memory); }
};
using Event = std::unique_ptr<xcb_generic_event_t, Free>;

int typeOf(const xcb_generic_event_t &event)
{
    return event.response_type & 0x7f;
}

template <typename Specific> const Specific &as(const Event &event)
{
    return *reinterpret_cast<const Specific *>(event.get());
}

} // namespace

ScreenWatcher::ScreenWatcher()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    if (!isConnected()) {
        return;
    }
    const auto *damage = xcb_get_extension_data(m_connection, &xcb_damage_id);
    m_damageNotify = static_cast<uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
    std::free(xcb_damage_query_version_reply(m_connection, //
                                             xcb_damage_query_version(m_connection, 1, 1),
                                             nullptr));

    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, root, XCB_CW_EVENT_MASK, &events);

    // The root window's damage includes all windows. Mapping a window causes none, painting does.
    xcb_damage_create(m_connection, xcb_generate_id(m_connection), root,
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(m_connection);
}

ScreenWatcher::~ScreenWatcher()
{
    xcb_disconnect(m_connection);
}

bool ScreenWatcher::isConnected() const
{
    return xcb_connection_has_error(m_connection) == 0;
}

std::optional<ScreenWatcher::ShownWindow>
ScreenWatcher::waitForPaintedWindow(std::chrono::minutes patience)
{
    std::set<xcb_window_t> large;
    std::optional<ShownWindow> mapped;
    const auto deadline = Clock::now() + patience;
    while (const Event event{nextEvent(deadline)}) {
        if (typeOf(*event) == XCB_CREATE_NOTIFY) {
            const auto &created = as<xcb_create_notify_event_t>(event);
            if (!created.override_redirect && created.width >= minimumWidth) {
                large.insert(created.window);
            }
        } else if (typeOf(*event) == XCB_MAP_NOTIFY) {
            const xcb_window_t window = as<xcb_map_notify_event_t>(event).window;
            if (large.contains(window)) {
                mapped = {window, Clock::now()};
            }
        } else if (typeOf(*event) == m_damageNotify && mapped
                   && as<xcb_damage_notify_event_t>(event).area.width >= minimumWidth) {
            return mapped;
        }
    }
    return {};
}

bool ScreenWatcher::waitForShownWindow(xcb_window_t window)
{
    const auto deadline = Clock::now() + kPatience;
    while (const Event event{nextEvent(deadline)}) {
        if (typeOf(*event) == XCB_MAP_NOTIFY
            && as<xcb_map_notify_event_t>(event).window == window) {
            return true;
        }
    }
    return false;
}

bool ScreenWatcher::waitForPaint()
{
    const auto deadline = Clock::now() + kPatience;
    while (const Event event{nextEvent(deadline)}) {
        if (typeOf(*event) == m_damageNotify) {
            return true;
        }
    }
    return false;
}

std::optional<ScreenWatcher::Clock::time_point>
ScreenWatcher::lastPaint(std::chrono::milliseconds duration)
{
    std::optional<Clock::time_point> last;
    const auto deadline = Clock::now() + duration;
    while (const Event event{nextEvent(deadline)}) {
        if (typeOf(*event) == m_damageNotify
            && as<xcb_damage_notify_event_t>(event).area.width >= minimumWidth) {
            last = Clock::now();
        }
    }
    return last;
}

void ScreenWatcher::requestClose(xcb_window_t window)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom("WM_PROTOCOLS");
    message.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
}

bool ScreenWatcher::waitForHiddenWindow(xcb_window_t window)
{
    const auto deadline = Clock::now() + kPatience;
    while (const Event event{nextEvent(deadline)}) {
        if (typeOf(*event) == XCB_UNMAP_NOTIFY
            && as<xcb_unmap_notify_event_t>(event).window == window) {
            return true;
        }
    }
    return false;
}

void ScreenWatcher::discardEvents()
{
    while (Event(xcb_poll_for_event(m_connection))) {
    }
}

// Returns the next event, which the caller frees, or null at the deadline or without a connection.
xcb_generic_event_t *ScreenWatcher::nextEvent(Clock::time_point deadline)
{
    while (isConnected()) {
        if (auto *event = xcb_poll_for_event(m_connection)) {
            return event;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0) {
            break;
        }
        pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        poll(&descriptor, 1, static_cast<int>(std::min<long long>(left.count(), 1000)));
    }
    return nullptr;
}

xcb_atom_t ScreenWatcher::atom(const char *name)
{
    const auto length = static_cast<uint16_t>(std::strlen(name));
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, length, name), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}
