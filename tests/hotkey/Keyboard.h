// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

/// Keys as a user types them, a window that gets those that are nobody's hotkey, and another
/// program that holds hotkeys too. Key sequences are those of QKeySequence::PortableText.
class Keyboard
{
public:
    /// Best kept for all cases of a test: a window manager moves the focus when the window goes.
    Keyboard();
    ~Keyboard();
    Q_DISABLE_COPY_MOVE(Keyboard)

    /// Gives the window the focus, lets the other program go of everything, and forgets what the
    /// window received.
    void reset();
    /// Whether the window has the focus.
    bool isReady() const;

    void type(const QString &sequence);
    /// How many presses of the sequence's key the window has received since the reset.
    int received(const QString &sequence);

    /// Has the other program hold a hotkey; false if it is refused.
    bool take(const QString &sequence);
    void giveBack(const QString &sequence);

    /// Whether the message, as a native event filter gets it, is the press of a key.
    static bool isPress(const void *message);

private:
    class Private;
    std::unique_ptr<Private> d;
};
