// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPoint>
#include <QSize>

class QScreen;
class QTimer;
class QWidget;

/// Moves a window of a fixed size onto a screen when a change of the screens leaves it on none, and
/// back when its own screen returns. The user and the program may put it anywhere.
class ScreenKeeper : public QObject
{
    Q_OBJECT

public:
    /// The window becomes the parent. It must have its size.
    explicit ScreenKeeper(QWidget *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watch(const QScreen *screen);
    void apply();

    QWidget *m_window;
    QTimer *m_timer;
    QPoint m_position; // where the program has put the window
    QSize m_size;
    bool m_isMoving = false;
    bool m_isKeeping = false; // from a change of the screens to the next move by the program
};
