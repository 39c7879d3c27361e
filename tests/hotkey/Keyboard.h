// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

/// A user's keyboard, a window that gets the keys that are no hotkey, and another program with
/// hotkeys. Key sequences are in QKeySequence::PortableText form.
class Keyboard
{
public:
    /// Keep it for all cases of a test: the window manager moves the focus when the window closes.
    Keyboard();
    ~Keyboard();
    Q_DISABLE_COPY_MOVE(Keyboard)

    /// Focuses the window, removes the other program's hotkeys, and clears the received keys.
    void reset();
    /// Whether the window has the focus.
    bool isReady() const;

    void type(const QString &sequence);
    /// How many presses of the sequence's key the window has received since reset().
    int received(const QString &sequence);

    /// Registers a hotkey for the other program; false if the system refuses it.
    bool grabHotkey(const QString &sequence);
    void releaseHotkey(const QString &sequence);

    /// Whether the message of a native event filter is a key press.
    static bool isPress(const void *message);

private:
    class Private;
    std::unique_ptr<Private> d;
};
