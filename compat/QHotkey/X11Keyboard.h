// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <qnamespace.h>

#include <compare>

#include <xcb/xproto.h>

/// A key of the X server with the modifiers that must be down.
struct X11Key
{
    xcb_keycode_t code = 0;
    quint16 modifiers = 0;

    // clang-tidy takes the comparison with 0 in the generated code for one with a null pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    friend auto operator<=>(const X11Key &, const X11Key &) = default;
};

/// A snapshot of the X server's keyboard mapping and modifier mapping.
class X11Keyboard
{
public:
    explicit X11Keyboard(xcb_connection_t *connection);

    /// The keys that type a combination, usually one; empty if the mapping has none.
    QList<X11Key> keysOf(QKeyCombination combination) const;

    /// The modifiers of Caps Lock, Num Lock and Scroll Lock.
    quint16 locks() const { return m_locks; }

private:
    void readSymbols(xcb_connection_t *connection);
    void readModifiers(xcb_connection_t *connection);
    QList<X11Key> keysOf(xcb_keysym_t wanted, quint16 modifiersBesides) const;
    xcb_keysym_t symbol(int code, int column) const;
    quint16 modifierOf(const QList<xcb_keysym_t> &symbols) const;
    quint16 modifiersOf(Qt::KeyboardModifiers modifiers) const;

    int m_firstCode = 0;
    int m_columns = 0;
    QList<xcb_keysym_t> m_symbols;              ///< m_columns for each key
    QList<QList<xcb_keycode_t>> m_modifierKeys; ///< keys that set each of the eight modifiers
    quint16 m_super = 0;
    quint16 m_locks = 0;
};
