// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>

class QResizeEvent;
class QTimer;
class QWidget;
class QWindow;
class Settings;

/// Keeps the window where it was last put, however often it hides and whatever its height is then.
/// Chooses the place of the first show, and stores the place where the user drags the window.
class WindowPlacement : public QObject
{
    Q_OBJECT

public:
    /// The window becomes the parent. The settings are not owned and must outlive it. Create it
    /// last of the objects that filter the window's events, so that they see the window in its
    /// place.
    WindowPlacement(QWidget *window, Settings *settings);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void filterWindowEvent(const QEvent &event);
    void filterMouseEvent(const QEvent &event);

    void show();
    void hide();
    void watchMouse();
    QPoint firstPosition() const;
    QPoint lastPosition() const;
    void stayOnSmallScreen(const QResizeEvent &event);
    void release();
    void storeDrag();

    QWidget *m_window;
    Settings *m_settings;
    QTimer *m_dragTimer;
    bool m_isPlaced = false;  // was shown before
    QPoint m_position;        // where the user or the window manager put the window
    QPoint m_shownPosition;   // where the last show put it
    QList<QRect> m_areas;     // the available area of each screen when m_position was set
    bool m_isPressed = false; // a mouse button, on the window
    bool m_isDragged = false; // since the position was stored
};

/// The place of a window that nobody has moved yet: centred across the area, its top at a fifth of
/// the height, but so that the area shows all of it.
QPoint initialPosition(const QSize &size, const QRect &area);
