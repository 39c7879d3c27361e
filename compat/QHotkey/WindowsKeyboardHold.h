// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>

#include <atomic>
#include <thread>

#include <windows.h>

/// Holds back the keys that follow a press of a hotkey. They go on to the window with the focus
/// when the program has reacted and, if it shows a window, when that window has the focus, or after
/// 300 ms. Until then a thread has a hook for the keyboard, so a busy program cannot block it.
class WindowsKeyboardHold : public QObject
{
public:
    WindowsKeyboardHold();
    /// Ends the hold.
    ~WindowsKeyboardHold() override;
    Q_DISABLE_COPY_MOVE(WindowsKeyboardHold)

    /// A hotkey with this virtual-key code has been pressed.
    void begin(unsigned code);

    /// The program has reacted to the press.
    void endWithFocus();

    void end();

private:
    std::thread m_thread;
    DWORD m_threadId = 0;
    std::atomic<bool> m_isHolding = false;
    QTimer m_timer;
};
