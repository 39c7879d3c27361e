// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <qnamespace.h>

#include <compare>

#include <xcb/xproto.h>

/// A key as the X server knows it, with the modifiers that are down besides.
struct X11Key
{
    xcb_keycode_t code = 0;
    quint16 modifiers = 0;

    friend auto operator<=>(const X11Key &, const X11Key &) = default;
};

/// The key map and the modifiers of an X server, as they are when this is made.
class X11Keyboard
{
public:
    explicit X11Keyboard(xcb_connection_t *connection);

    /// The keys that type a combination, as a rule one; empty if this key map has none.
    QList<X11Key> keysOf(QKeyCombination combination) const;

    /// The modifiers that stand for a lock and not for a key that is held down.
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
    QList<xcb_keysym_t> m_symbols;         ///< of each key in turn, m_columns each
    QList<QList<xcb_keycode_t>> m_holders; ///< the keys of each of the eight modifiers
    quint16 m_super = 0;
    quint16 m_locks = 0;
};
