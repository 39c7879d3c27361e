// SPDX-License-Identifier: GPL-3.0-or-later
#include "compat/OtherClient.h"

#include <QTest>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

template <typename Reply> std::unique_ptr<Reply, decltype(&std::free)> owned(Reply *reply)
{
    return {reply, &std::free};
}

} // namespace

OtherClient::OtherClient()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_root = screen->root;
    m_window = xcb_generate_id(m_connection);
    // Bypasses the window manager, so that the window can take the focus at once.
    const quint32 values[] = {1, XCB_EVENT_MASK_KEY_PRESS};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(m_connection, m_window);
    reset();
}

OtherClient::~OtherClient()
{
    reset();
    xcb_disconnect(m_connection);
}

void OtherClient::reset()
{
    while (!m_down.isEmpty()) {
        release(m_down.last());
    }
    xcb_ungrab_key(m_connection, XCB_GRAB_ANY, m_root, XCB_MOD_MASK_ANY);
    xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_POINTER_ROOT, m_window, XCB_CURRENT_TIME);
    receive();
    m_received.clear();
}

bool OtherClient::hasFocus() const
{
    const auto reply =
        owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return reply && reply->focus == m_window;
}

xcb_keycode_t OtherClient::keyOf(xcb_keysym_t symbol) const
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto cookie = xcb_get_keyboard_mapping(m_connection, setup->min_keycode, quint8(count));
    const auto reply = owned(xcb_get_keyboard_mapping_reply(m_connection, cookie, nullptr));
    const int columns = reply->keysyms_per_keycode;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (int column = 0; column < qMin(columns, 2); ++column) {
        for (int key = 0; key < count; ++key) {
            if (symbols[key * columns + column] == symbol) {
                return xcb_keycode_t(setup->min_keycode + key);
            }
        }
    }
    return 0;
}

void OtherClient::press(xcb_keysym_t symbol)
{
    m_down.append(symbol);
    fake(XCB_KEY_PRESS, symbol);
}

void OtherClient::release(xcb_keysym_t symbol)
{
    m_down.removeOne(symbol);
    fake(XCB_KEY_RELEASE, symbol);
}

void OtherClient::type(const QList<xcb_keysym_t> &symbols)
{
    for (const xcb_keysym_t symbol : symbols) {
        press(symbol);
    }
    for (auto it = symbols.crbegin(); it != symbols.crend(); ++it) {
        release(*it);
    }
}

bool OtherClient::grab(xcb_keysym_t symbol, quint16 modifiers)
{
    const auto cookie = xcb_grab_key_checked(m_connection, false, m_root, modifiers, keyOf(symbol),
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    return !owned(xcb_request_check(m_connection, cookie));
}

void OtherClient::ungrab(xcb_keysym_t symbol, quint16 modifiers)
{
    const auto cookie = xcb_ungrab_key_checked(m_connection, keyOf(symbol), m_root, modifiers);
    owned(xcb_request_check(m_connection, cookie));
}

quint16 OtherClient::modifiers() const
{
    const auto reply = owned(
        xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr));
    return reply->mask & 0xff;
}

bool OtherClient::setModifier(int modifier, xcb_keysym_t symbol)
{
    const auto old = owned(xcb_get_modifier_mapping_reply(
        m_connection, xcb_get_modifier_mapping(m_connection), nullptr));
    const int perModifier = old->keycodes_per_modifier;
    xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(old.get());
    QList<xcb_keycode_t> changed(codes, codes + 8 * perModifier);
    for (int i = 0; i < perModifier; ++i) {
        changed[modifier * perModifier + i] =
            i == 0 && symbol != XCB_NO_SYMBOL ? keyOf(symbol) : xcb_keycode_t(0);
    }
    const auto cookie =
        xcb_set_modifier_mapping(m_connection, quint8(perModifier), changed.constData());
    const auto reply = owned(xcb_set_modifier_mapping_reply(m_connection, cookie, nullptr));
    return reply && reply->status == XCB_MAPPING_STATUS_SUCCESS;
}

int OtherClient::received(xcb_keysym_t symbol)
{
    receive();
    return int(m_received.count(keyOf(symbol)));
}

void OtherClient::receive()
{
    hasFocus(); // its reply arrives after all earlier events
    while (const auto event = owned(xcb_poll_for_event(m_connection))) {
        if (event->response_type == XCB_KEY_PRESS) {
            m_received.append(reinterpret_cast<xcb_key_press_event_t *>(event.get())->detail);
        }
    }
}

void OtherClient::fake(quint8 type, xcb_keysym_t symbol)
{
    const xcb_keycode_t code = keyOf(symbol);
    QVERIFY2(code != 0, "no key has this symbol");
    // A real keyboard never sends two events in one millisecond.
    constexpr quint32 delay = 2;
    const auto cookie =
        xcb_test_fake_input_checked(m_connection, type, code, delay, m_root, 0, 0, 0);
    owned(xcb_request_check(m_connection, cookie));
}
