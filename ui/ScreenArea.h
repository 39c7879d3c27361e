// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

class QScreen;
class QWindow;

/// The size of the window with many rows or a page. On a smaller screen, the window is smaller too.
constexpr QSize fullWindowSize(760, 460);

/// Whether a screen with this available size is too small for fullWindowSize.
constexpr bool isSmallScreen(const QSize &available)
{
    return available.width() < fullWindowSize.width()
           || available.height() < fullWindowSize.height();
}

/// The part of the screen without panels. All of it while Qt does not know that part, such as for a
/// screen that was just added.
QRect availableArea(const QScreen *screen);

/// The available area of each screen, the primary one first.
QList<QRect> screenAreas();

/// If the centre of this geometry is on another screen, moves the window to that screen and sets
/// the geometry. Call this before QWidget::move() to another screen. That moves the window without
/// its size, so with another device pixel ratio the window would keep its size in device pixels.
void enterScreen(QWindow *window, const QRect &geometry);

/// The area into which the rectangle needs the shortest move; null without areas.
QRect areaNearest(const QRect &rect, const QList<QRect> &areas);

/// The position of the rectangle's top left corner after it was moved into the area, by as little
/// as possible. A rectangle that is too large shows its top left corner.
QPoint positionInside(const QRect &rect, const QRect &area);

/// The same for the area nearest to the rectangle. Without areas, the rectangle stays.
QPoint positionInside(const QRect &rect, const QList<QRect> &areas);
