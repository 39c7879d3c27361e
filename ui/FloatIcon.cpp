// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FloatIcon.h"

#include "platform/Compositor.h"
#include "platform/FloatingWindow.h"
#include "platform/WindowFocus.h"
#include "settings/Settings.h"
#include "settings/ThemeManager.h"
#include "ui/MainWindow.h"
#include "ui/ScreenKeeper.h"

#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 2; // of the disc within the icon

// The pixels that lie wholly within the disc: those at its edge are partly transparent.
QRegion discRegion(int size)
{
    const int radius = size / 2 - margin;
    QRegion region;
    for (int row = -radius; row < radius; ++row) {
        const int outermost = std::max(std::abs(row), std::abs(row + 1));
        const int half = int(std::sqrt(radius * radius - outermost * outermost));
        region += QRect(size / 2 - half, size / 2 + row, 2 * half, 1);
    }
    return region;
}

} // namespace

FloatIcon::FloatIcon(Settings *settings, ThemeManager *theme, QWidget *mainWindow, QWidget *parent)
    : QWidget(parent)
    , m_settings(settings)
    , m_theme(theme)
    , m_mainWindow(mainWindow)
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_TranslucentBackground);
    resize(48, 48);
    setAccessibleName(u"Vaskel"_s);
    new ScreenKeeper(this);
    connect(m_theme, &ThemeManager::paletteChanged, this, qOverload<>(&QWidget::update));
}

bool FloatIcon::event(QEvent *event)
{
    if (event->type() == QEvent::WinIdChange && windowHandle() && windowHandle()->handle()) {
        // Not by Qt::WindowDoesNotAcceptFocus: the flags of the widget stay as they are.
        platform::refuseFocus(windowHandle());
        windowHandle()->installEventFilter(this);
    } else if (event->type() == QEvent::Show && !event->spontaneous()) {
        platform::keepFloating(windowHandle(), platform::Floating::Unmanaged);
    }
    return QWidget::event(event);
}

// The native window is exposed when it is shown, and when a compositor starts or ends.
bool FloatIcon::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose) {
        updateMask();
    }
    return QWidget::eventFilter(watched, event);
}

void FloatIcon::updateMask()
{
    const QRegion shape = platform::isCompositing() ? QRegion() : discRegion(width());
    if (shape != mask()) {
        setMask(shape); // an empty one removes it
    }
}

void FloatIcon::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        m_dragOffset = event->globalPosition().toPoint() - frameGeometry().topLeft();
        m_isDragged = false;
        m_wasMainWindowShowing = isMainWindowShowing();
    }
}

void FloatIcon::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton)) {
        m_isDragged = true;
        move(event->globalPosition().toPoint() - m_dragOffset);
    }
}

void FloatIcon::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        openMenu(event->globalPosition().toPoint());
    } else if (event->button() == Qt::LeftButton) {
        m_settings->setFloatIconPos(pos());
        // The press may take the focus from the main window, which then hides itself if the user
        // wants it to. The click must not show it again.
        const bool hasHidden = m_wasMainWindowShowing && !isMainWindowShowing();
        if (!m_isDragged && !hasHidden) {
            toggleMainWindow();
        }
    }
}

bool FloatIcon::isMainWindowShowing() const
{
    return m_mainWindow && isShowing(*m_mainWindow);
}

void FloatIcon::toggleMainWindow()
{
    if (isMainWindowShowing()) {
        m_mainWindow->hide();
    } else if (auto *window = qobject_cast<MainWindow *>(m_mainWindow)) {
        window->showAndActivate();
    }
}

void FloatIcon::openMenu(const QPoint &globalPosition)
{
    QMenu menu(this);
    const QAction *toggle =
        menu.addAction(isMainWindowShowing() ? tr("Hide main window") : tr("Show main window"));
    menu.addSeparator();
    const QAction *hide = menu.addAction(tr("Hide float icon"));

    const QAction *chosen = menu.exec(globalPosition);
    if (chosen == toggle) {
        toggleMainWindow();
    } else if (chosen == hide) {
        m_settings->setShowFloatIcon(false);
    }
}

void FloatIcon::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(m_theme->accent());
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(rect().adjusted(margin, margin, -margin, -margin));

    painter.setPen(m_theme->bg());
    QFont font = painter.font();
    font.setWeight(QFont::Bold);
    font.setPointSize(16);
    painter.setFont(font);
    painter.drawText(rect(), Qt::AlignCenter, u"V"_s);
}

QPoint floatIconPosition(const QPoint &stored, const std::optional<QRect> &available)
{
    if (!available || (stored.x() >= 0 && stored.y() >= 0)) {
        return stored;
    }
    return available->bottomRight() - QPoint(60, 60);
}
