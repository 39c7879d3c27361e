// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

class QKeyEvent;
class QMessageBox;
class QWidget;

/// Keeps a message box that appears by itself from being answered by input that was meant for the
/// window below. For a moment after the box shows, typed keys go on to the widget of the window
/// that has the focus, and clicks are dropped. Later, Enter and Space answer only once the user has
/// moved the focus to a button, and a letter only with Alt. QAbstractButton::click() works at any
/// time.
class AnswerGuard : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds usualDuration{1000};

    /// Guards a box that is not visible yet and has all of its widgets; the box becomes the parent.
    /// Keys go on to the window only if it is active now: otherwise they were meant for another
    /// program, and are dropped.
    AnswerGuard(QMessageBox *box, QWidget *window,
                std::chrono::milliseconds duration = usualDuration);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool filterAtFirst(QEvent *event) const;
    bool filterKeyPress(const QKeyEvent &event) const;
    void passOn(const QKeyEvent &event) const;

    QMessageBox *m_box;
    QPointer<QWidget> m_window;
    QTimer m_timer{this};
    bool m_isOver = false;       // the first moment
    bool m_isFocusMoved = false; // by the user, to a button
};
