// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ScreenArea.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace {

int distance(const QRect &rect, const QRect &area)
{
    return (positionInside(rect, area) - rect.topLeft()).manhattanLength();
}

/// Keeps the events of a new geometry from the window during its lifetime.
class GeometryFilter : public QObject
{
public:
    explicit GeometryFilter(QWindow *window) { window->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        return event->type() == QEvent::Resize || event->type() == QEvent::Move;
    }
};

} // namespace

// On X11, Qt takes the part from _NET_WORKAREA, which the window manager changes after the screens.
QRect availableArea(const QScreen *screen)
{
    const QRect available = screen->availableGeometry();
    return available.isEmpty() ? screen->geometry() : available;
}

QList<QRect> screenAreas()
{
    QList<QRect> areas;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        areas.append(availableArea(screen));
    }
    return areas;
}

void enterScreen(QWindow *window, const QRect &geometry)
{
    QScreen *screen = QGuiApplication::screenAt(geometry.center());
    if (!screen || screen == window->screen()) {
        return;
    }
    {
        // Newer versions of Qt report at once the size that the old device pixels have on this
        // screen. The widget would take it, and grow from it to its minimum size.
        const GeometryFilter filter(window);
        window->setScreen(screen);
    }
    window->setGeometry(geometry);
}

QRect areaNearest(const QRect &rect, const QList<QRect> &areas)
{
    const auto nearest =
        std::min_element(areas.cbegin(), areas.cend(), [&](const QRect &one, const QRect &other) {
            return distance(rect, one) < distance(rect, other);
        });
    return nearest == areas.cend() ? QRect() : *nearest;
}

QPoint positionInside(const QRect &rect, const QRect &area)
{
    const QPoint last = area.bottomRight() - QPoint(rect.width() - 1, rect.height() - 1);
    return {std::max(std::min(rect.x(), last.x()), area.x()),
            std::max(std::min(rect.y(), last.y()), area.y())};
}

QPoint positionInside(const QRect &rect, const QList<QRect> &areas)
{
    return areas.isEmpty() ? rect.topLeft() : positionInside(rect, areaNearest(rect, areas));
}
