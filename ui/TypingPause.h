// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

/// Waits until the user pauses in typing. A modal dialog that appears by itself would otherwise
/// cost letters: Qt drops the keys of a window that it blocks until the dialog has the focus.
class TypingPause : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds duration{500};

    explicit TypingPause(QObject *parent);

    /// Calls the function as soon as no key has been pressed in the program for the duration, which
    /// may be at once. A function that still waits is replaced.
    void call(const std::function<void()> &function);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void callAtPause();

    std::function<void()> m_function;
    QElapsedTimer m_lastKey; // invalid before the first key
    QTimer m_timer{this};
};
