// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ScreenKeeper.h"

#include "ui/ScreenArea.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <chrono>

using namespace std::chrono_literals;

ScreenKeeper::ScreenKeeper(QWidget *window)
    : QObject(window)
    , m_window(window)
    , m_timer(new QTimer(this))
    , m_position(window->pos())
    , m_size(window->size())
{
    // One change of the screens emits several signals. Move the window once, after the last one.
    m_timer->setInterval(0ms);
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &ScreenKeeper::apply);

    connect(qGuiApp, &QGuiApplication::screenAdded, this, &ScreenKeeper::watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, m_timer, qOverload<>(&QTimer::start));
    connect(qGuiApp, &QGuiApplication::screenRemoved, m_timer, qOverload<>(&QTimer::start));
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        watch(screen);
    }
    m_window->installEventFilter(this);
}

bool ScreenKeeper::eventFilter(QObject *, QEvent *event)
{
    // A window manager moves it because of the screens, too; those moves are spontaneous.
    if (event->type() == QEvent::Move && !event->spontaneous() && !m_isMoving) {
        m_position = m_window->pos();
        m_isKeeping = false;
    }
    // On a screen of another device pixel ratio it has another size in pixels at first.
    if (event->type() == QEvent::Resize && m_isKeeping && m_window->size() != m_size) {
        m_timer->start();
    }
    return false;
}

void ScreenKeeper::watch(const QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, m_timer, qOverload<>(&QTimer::start));
    connect(screen, &QScreen::availableGeometryChanged, m_timer, qOverload<>(&QTimer::start));
}

void ScreenKeeper::apply()
{
    if (m_window->testAttribute(Qt::WA_PendingMoveEvent)) { // was moved before its first show
        m_position = m_window->pos();
    }
    m_isKeeping = true;
    const QRect frame(m_position, m_size);
    const bool isShown = QGuiApplication::screenAt(frame.center());
    const QPoint position = isShown ? m_position : positionInside(frame, screenAreas());
    if (position != m_window->pos()) {
        const QScopedValueRollback moving(m_isMoving, true);
        if (QWindow *nativeWindow = m_window->windowHandle()) {
            enterScreen(nativeWindow, QRect(position, frame.size()));
        }
        m_window->move(position);
    }
    m_window->resize(m_size);
}
