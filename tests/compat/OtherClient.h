// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QtGlobal>

#include <xcb/xproto.h>

/// Another program on the display. Its window takes the focus, and its key events come from the
/// keyboard as far as other programs can tell.
class OtherClient
{
public:
    /// Keep it for all cases of a test: the window manager moves the focus when its window closes.
    OtherClient();
    ~OtherClient();
    Q_DISABLE_COPY_MOVE(OtherClient)

    /// Takes the focus, releases all keys and grabs, and clears the received events.
    void reset();

    bool hasFocus() const;

    /// The key with this symbol on its first or second level, or 0.
    xcb_keycode_t keyOf(xcb_keysym_t symbol) const;

    void press(xcb_keysym_t symbol);
    void release(xcb_keysym_t symbol);

    /// Presses the keys in turn and releases them in the opposite order.
    void type(const QList<xcb_keysym_t> &symbols);

    /// Grabs a key with exactly these modifiers; false if another client has grabbed it.
    bool grab(xcb_keysym_t symbol, quint16 modifiers);
    void ungrab(xcb_keysym_t symbol, quint16 modifiers);

    /// The modifiers that are down or locked.
    quint16 modifiers() const;

    /// Lets only the key of this symbol, or no key, set one of the eight modifiers.
    bool setModifier(int modifier, xcb_keysym_t symbol);

    /// How many presses of the key the window has received since reset().
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
