// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowPlacement.h"

#include "platform/FloatingWindow.h"
#include "settings/Settings.h"
#include "ui/ScreenArea.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <chrono>

using namespace std::chrono_literals;

namespace {

// The last move of a drag may arrive after the release, and the release may not arrive at all.
constexpr auto dragPause = 300ms;

} // namespace

WindowPlacement::WindowPlacement(QWidget *window, Settings *settings)
    : QObject(window)
    , m_window(window)
    , m_settings(settings)
    , m_dragTimer(new QTimer(this))
{
    m_dragTimer->setInterval(dragPause);
    m_dragTimer->setSingleShot(true);
    connect(m_dragTimer, &QTimer::timeout, this, &WindowPlacement::storeDrag);
    m_window->installEventFilter(this);
    // QWindowKit removes the frame while Qt creates the native window, which makes Qt create it
    // again. In the first show, that would put it on the screen before the show event.
    if (!m_window->windowFlags().testFlag(Qt::FramelessWindowHint)) {
        m_window->winId();
    }
}

bool WindowPlacement::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window) {
        filterWindowEvent(*event);
    } else {
        filterMouseEvent(*event);
    }
    return false;
}

void WindowPlacement::filterWindowEvent(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Show:
        if (!event.spontaneous()) { // otherwise it was minimised
            show();
        }
        break;
    case QEvent::Hide:
        if (!event.spontaneous()) {
            hide();
        }
        break;
    case QEvent::Move:
        if (event.spontaneous() && (m_isPressed || m_dragTimer->isActive())) {
            m_isDragged = true;
            m_dragTimer->start();
        }
        break;
    case QEvent::Resize:
        stayOnSmallScreen(static_cast<const QResizeEvent &>(event));
        break;
    default:
        break;
    }
}

void WindowPlacement::filterMouseEvent(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonDblClick:
        m_isPressed = true;
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::NonClientAreaMouseButtonRelease:
        release();
        break;
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseMove:
        if (static_cast<const QMouseEvent &>(event).buttons() == Qt::NoButton) {
            release();
        }
        break;
    default:
        break;
    }
}

void WindowPlacement::release()
{
    if (m_isPressed) {
        m_isPressed = false;
        m_dragTimer->start();
    }
}

// The show event comes before the window is visible.
void WindowPlacement::show()
{
    watchMouse();
    m_shownPosition = m_isPlaced ? lastPosition() : firstPosition();
    if (!m_isPlaced) {
        m_isPlaced = true;
        m_position = m_shownPosition;
        m_areas = screenAreas();
    }
    QWindow *nativeWindow = m_window->windowHandle();
    if (m_shownPosition != m_window->pos()) {
        enterScreen(nativeWindow, QRect(m_shownPosition, m_window->size()));
        m_window->move(m_shownPosition);
    }
    // Qt writes only a position that was set into the size hints. Without one, the window manager
    // would choose another position.
    nativeWindow->setPosition(nativeWindow->position());
    platform::keepFloating(nativeWindow, platform::Floating::AsDialog);
}

void WindowPlacement::hide()
{
    m_isPressed = false;
    m_dragTimer->stop();
    storeDrag();
    if (m_window->pos() != m_shownPosition) {
        m_position = m_window->pos();
        m_areas = screenAreas();
    }
}

// Filters before the window's agent, which takes presses on the title bar.
void WindowPlacement::watchMouse()
{
    QWindow *nativeWindow = m_window->windowHandle();
    nativeWindow->removeEventFilter(this);
    nativeWindow->installEventFilter(this);
}

QPoint WindowPlacement::firstPosition() const
{
    if (m_window->testAttribute(Qt::WA_Moved)) {
        return m_window->pos();
    }
    const QSize size = fullWindowSize.expandedTo(m_window->size()); // many pins widen it
    if (const auto stored = m_settings->windowPosition()) {
        return positionInside({*stored, size}, screenAreas());
    }
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen) {
        screen = m_window->screen();
    }
    return initialPosition(size, availableArea(screen));
}

QPoint WindowPlacement::lastPosition() const
{
    const QList<QRect> areas = screenAreas();
    // The user may have moved it partly off the screen. Respect that until the screens change.
    const QSize size = m_window->size().expandedTo(QSize(fullWindowSize.width(), 0));
    return areas == m_areas ? m_position : positionInside({m_position, size}, areas);
}

// On a small screen, a window that grows would leave it.
void WindowPlacement::stayOnSmallScreen(const QResizeEvent &event)
{
    const QRect area = availableArea(m_window->screen());
    // While the window moves to a screen of another device pixel ratio, screen() may still be the
    // old one.
    const bool isThere = area.intersects(m_window->geometry());
    if (isSmallScreen(area.size()) && isThere && !event.spontaneous() && m_window->isVisible()) {
        m_window->move(positionInside(m_window->geometry(), area));
    }
}

void WindowPlacement::storeDrag()
{
    if (m_isDragged) {
        m_isDragged = false;
        m_settings->setWindowPosition(m_window->pos());
    }
}

QPoint initialPosition(const QSize &size, const QRect &area)
{
    const QPoint position(area.x() + (area.width() - size.width()) / 2,
                          area.y() + area.height() / 5);
    return positionInside({position, size}, area);
}
