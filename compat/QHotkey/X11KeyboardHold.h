// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <optional>

#include <xcb/xproto.h>

/// Holds back the keys that follow a press of a grabbed key. From that press on, which grabs the
/// keyboard in synchronous mode, the X server keeps all keys. They go on to the window with the
/// focus when the program has reacted and, if it shows a window, when that window has the focus, or
/// after 300 ms.
class X11KeyboardHold : public QObject
{
public:
    X11KeyboardHold();
    /// Ends the hold.
    ~X11KeyboardHold() override;

    /// The server has begun to hold the keys, with a press at this time.
    void begin(xcb_timestamp_t pressTime);

    /// The program has reacted to the press.
    void endWithFocus();

    void end();

private:
    std::optional<xcb_timestamp_t> m_pressTime; ///< nothing while no key is held back
    QDeadlineTimer m_deadline;
    QTimer m_timer;
};
