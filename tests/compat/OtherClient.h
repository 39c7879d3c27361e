// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QtGlobal>

#include <xcb/xproto.h>

/// Another program on the display: its window takes the focus, and what it types comes from the
/// keyboard as far as everybody else can tell.
class OtherClient
{
public:
    /// Best kept for all cases of a test: a window manager moves the focus when its window goes.
    OtherClient();
    ~OtherClient();
    Q_DISABLE_COPY_MOVE(OtherClient)

    /// Takes the focus, lets go of all keys and grabs, and forgets what its window received.
    void reset();

    bool hasFocus() const;

    /// The key that has a symbol on its first or second level, or 0.
    xcb_keycode_t keyOf(xcb_keysym_t symbol) const;

    void press(xcb_keysym_t symbol);
    void release(xcb_keysym_t symbol);

    /// Presses the keys in turn and releases them in the opposite order.
    void type(const QList<xcb_keysym_t> &symbols);

    /// Tries to take a key with exactly these modifiers for itself; false if another client has it.
    bool grab(xcb_keysym_t symbol, quint16 modifiers);
    void ungrab(xcb_keysym_t symbol, quint16 modifiers);

    /// The modifiers that are down or locked.
    quint16 modifiers() const;

    /// Makes the key of a symbol, if any, the only one that sets a modifier, one of the eight.
    bool setModifier(int modifier, xcb_keysym_t symbol);

    /// How many presses of a key its window has received since the reset.
    int received(xcb_keysym_t symbol);

private:
    void receive();
    void fake(quint8 type, xcb_keysym_t symbol);

    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = 0;
    xcb_window_t m_window = 0;
    QList<xcb_keysym_t> m_down;
    QList<xcb_keycode_t> m_received;
};
