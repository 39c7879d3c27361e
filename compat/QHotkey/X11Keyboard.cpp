// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11Keyboard.h"

#include "X11Keysym.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <X11/keysym.h>
#include <xcb/xcb.h>

namespace {

// Two groups with an unshifted and a shifted symbol each. Further levels need modifiers that
// QKeyCombination lacks.
constexpr int usedColumns = 4;
constexpr int modifierCount = 8;

template <typename Reply> std::unique_ptr<Reply, decltype(&std::free)> owned(Reply *reply)
{
    return {reply, &std::free};
}

bool isOfKeypad(xcb_keysym_t symbol)
{
    return symbol >= XK_KP_Space && symbol <= XK_KP_Equal;
}

} // namespace

X11Keyboard::X11Keyboard(xcb_connection_t *connection)
{
    readSymbols(connection);
    readModifiers(connection);
    m_super = modifierOf({XK_Super_L, XK_Super_R});
    m_locks = XCB_MOD_MASK_LOCK | modifierOf({XK_Num_Lock}) | modifierOf({XK_Scroll_Lock});
}

QList<X11Key> X11Keyboard::keysOf(QKeyCombination combination) const
{
    QList<X11Key> keys;
    const QList<xcb_keysym_t> symbols = x11Keysyms(combination);
    for (auto it = symbols.begin(); it != symbols.end() && keys.isEmpty(); ++it) {
        keys = keysOf(*it, modifiersOf(combination.keyboardModifiers()));
    }
    return keys;
}

QList<X11Key> X11Keyboard::keysOf(xcb_keysym_t wanted, quint16 modifiersBesides) const
{
    QList<X11Key> keys;
    if (m_columns == 0) {
        return keys;
    }
    const int codes = int(m_symbols.size()) / m_columns;
    for (int column = 0; column < usedColumns && keys.isEmpty(); ++column) {
        // The second column needs Shift, but on the keypad it needs Num Lock.
        const bool isShifted = column % 2 == 1 && !isOfKeypad(wanted);
        const quint16 modifiers = modifiersBesides | (isShifted ? XCB_MOD_MASK_SHIFT : 0);
        for (int code = m_firstCode; code < m_firstCode + codes; ++code) {
            if (symbol(code, column) == wanted) {
                keys.append({xcb_keycode_t(code), modifiers});
            }
        }
    }
    return keys;
}

void X11Keyboard::readSymbols(xcb_connection_t *connection)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto cookie = xcb_get_keyboard_mapping(connection, setup->min_keycode, quint8(count));
    const auto reply = owned(xcb_get_keyboard_mapping_reply(connection, cookie, nullptr));
    if (!reply) {
        return;
    }
    m_firstCode = setup->min_keycode;
    m_columns = reply->keysyms_per_keycode;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    m_symbols = {symbols, symbols + xcb_get_keyboard_mapping_keysyms_length(reply.get())};
}

void X11Keyboard::readModifiers(xcb_connection_t *connection)
{
    const auto cookie = xcb_get_modifier_mapping(connection);
    const auto reply = owned(xcb_get_modifier_mapping_reply(connection, cookie, nullptr));
    if (!reply) {
        return;
    }
    const xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(reply.get());
    const int perModifier = reply->keycodes_per_modifier;
    for (int modifier = 0; modifier < modifierCount; ++modifier) {
        const xcb_keycode_t *first = codes + modifier * perModifier;
        m_modifierKeys.append(QList<xcb_keycode_t>(first, first + perModifier));
    }
}

xcb_keysym_t X11Keyboard::symbol(int code, int column) const
{
    return column < m_columns ? m_symbols.at((code - m_firstCode) * m_columns + column)
                              : XCB_NO_SYMBOL;
}

quint16 X11Keyboard::modifierOf(const QList<xcb_keysym_t> &symbols) const
{
    const auto hasSymbol = [&](xcb_keycode_t code) {
        const auto isAt = [&](xcb_keysym_t wanted) {
            return symbol(code, 0) == wanted || symbol(code, 1) == wanted;
        };
        return code >= m_firstCode && m_columns > 0
               && std::any_of(symbols.begin(), symbols.end(), isAt);
    };
    for (int modifier = 0; modifier < m_modifierKeys.size(); ++modifier) {
        const QList<xcb_keycode_t> &codes = m_modifierKeys.at(modifier);
        if (std::any_of(codes.begin(), codes.end(), hasSymbol)) {
            return quint16(1U << unsigned(modifier));
        }
    }
    return 0;
}

quint16 X11Keyboard::modifiersOf(Qt::KeyboardModifiers modifiers) const
{
    quint16 result = 0;
    if (modifiers & Qt::ShiftModifier) {
        result |= XCB_MOD_MASK_SHIFT;
    }
    if (modifiers & Qt::ControlModifier) {
        result |= XCB_MOD_MASK_CONTROL;
    }
    if (modifiers & Qt::AltModifier) {
        result |= XCB_MOD_MASK_1;
    }
    if (modifiers & Qt::MetaModifier) {
        result |= m_super ? m_super : quint16(XCB_MOD_MASK_4);
    }
    return result;
}
