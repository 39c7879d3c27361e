// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgetwindowagent.h"

#include "systemframe.h"
#include "systemmoveresize.h"

#include <QApplication>
#include <QMouseEvent>
#include <QtMath>

namespace QWK {

namespace {

// In device-independent pixels.
constexpr int resizeBorder = 6;

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge)) {
        return Qt::SizeFDiagCursor;
    }
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge)) {
        return Qt::SizeBDiagCursor;
    }
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

Qt::WindowFrameSection sectionOf(Qt::Edges edges)
{
    static const QHash<Qt::Edges::Int, Qt::WindowFrameSection> sections = {
        {Qt::LeftEdge, Qt::LeftSection},
        {Qt::TopEdge | Qt::LeftEdge, Qt::TopLeftSection},
        {Qt::TopEdge, Qt::TopSection},
        {Qt::TopEdge | Qt::RightEdge, Qt::TopRightSection},
        {Qt::RightEdge, Qt::RightSection},
        {Qt::BottomEdge | Qt::RightEdge, Qt::BottomRightSection},
        {Qt::BottomEdge, Qt::BottomSection},
        {Qt::BottomEdge | Qt::LeftEdge, Qt::BottomLeftSection},
    };
    return sections.value(edges.toInt(), Qt::NoSection);
}

// Rounds down: at a higher density several pixels of the screen share one position.
QPoint pixelOf(const QSinglePointEvent *event)
{
    return {qFloor(event->position().x()), qFloor(event->position().y())};
}

} // namespace

WidgetWindowAgent::WidgetWindowAgent(QObject *parent)
    : WindowAgentBase(parent)
{
}

WidgetWindowAgent::~WidgetWindowAgent()
{
    showCursor({});
}

bool WidgetWindowAgent::setup(QWidget *window)
{
    if (m_window || !window || !window->isWindow()) {
        return false;
    }
    m_window = window;
    m_window->setWindowFlag(Qt::FramelessWindowHint);
    m_window->installEventFilter(this);
    watchNativeWindow();
    return true;
}

QWidget *WidgetWindowAgent::titleBar() const
{
    return m_titleBar;
}

void WidgetWindowAgent::setTitleBar(QWidget *widget)
{
    if (m_titleBar == widget) {
        return;
    }
    m_titleBar = widget;
    Q_EMIT titleBarChanged(widget);
}

QWidget *WidgetWindowAgent::systemButton(SystemButton button) const
{
    return m_systemButtons.value(button);
}

void WidgetWindowAgent::setSystemButton(SystemButton button, QWidget *widget)
{
    if (systemButton(button) == widget) {
        return;
    }
    m_systemButtons.insert(button, widget);
    Q_EMIT systemButtonChanged(button, widget);
}

bool WidgetWindowAgent::isHitTestVisible(const QWidget *widget) const
{
    return widget && m_hitTestVisible.contains(widget);
}

void WidgetWindowAgent::setHitTestVisible(QWidget *widget, bool visible)
{
    m_hitTestVisible.removeAll(nullptr);
    m_hitTestVisible.removeAll(widget);
    if (widget && visible) {
        m_hitTestVisible.append(widget);
    }
}

bool WidgetWindowAgent::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_nativeWindow) {
        return handleWindowEvent(event);
    }
    if (watched == m_window && event->type() == QEvent::WinIdChange) {
        watchNativeWindow();
    }
    return false;
}

void WidgetWindowAgent::watchNativeWindow()
{
    QWindow *nativeWindow = m_window->windowHandle();
    // The native handle may be new although the QWindow is the same.
    m_frame.reset();
    if (nativeWindow && nativeWindow->handle()) {
        m_frame = SystemFrame::create(
            nativeWindow, [this](const QPoint &position) { return sectionAt(position); });
    }
    if (m_nativeWindow == nativeWindow) {
        return;
    }
    if (m_nativeWindow) {
        m_nativeWindow->removeEventFilter(this);
    }
    m_nativeWindow = nativeWindow;
    m_pressTaken = false;
    // The QWindow gets all events of the window before any child widget does.
    if (m_nativeWindow) {
        m_nativeWindow->installEventFilter(this);
    }
}

// Returns whether to keep the event from the widgets.
bool WidgetWindowAgent::handleWindowEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return handlePress(static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return handleMove(static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return handleRelease(static_cast<QMouseEvent *>(event));
    case QEvent::Enter:
        showCursor(edgesAt(pixelOf(static_cast<QEnterEvent *>(event))));
        return false;
    case QEvent::Leave:
    case QEvent::Hide:
        showCursor({});
        return false;
    default:
        return false;
    }
}

bool WidgetWindowAgent::handlePress(const QMouseEvent *event)
{
    const QPoint position = pixelOf(event);
    m_pressTaken = false;
    if (event->buttons() != Qt::LeftButton) {
        return false;
    }
    // Start at the press: at the first move the window would lag behind the pointer.
    if (const Qt::Edges edges = edgesAt(position)) {
        // The window system shows its own cursor while it resizes.
        showCursor({});
        m_pressTaken = true;
        m_nativeWindow->startSystemResize(edges);
    } else if (isInTitleBar(position)) {
        m_pressTaken = true;
        m_nativeWindow->startSystemMove();
    }
    return m_pressTaken;
}

bool WidgetWindowAgent::handleMove(const QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton) {
        m_pressTaken = false;
        showCursor(edgesAt(pixelOf(event)));
    }
    return m_pressTaken;
}

// The window system has not taken over yet if the release arrives here. Cancel, or it would never
// end the move.
bool WidgetWindowAgent::handleRelease(const QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_pressTaken) {
        return false;
    }
    m_pressTaken = false;
    cancelSystemMoveResize(m_nativeWindow);
    return true;
}

// Whether the widget at this position handles presses itself.
bool WidgetWindowAgent::isInteractive(const QPoint &position) const
{
    const QWidget *widget = m_window->childAt(position);
    while (widget && widget != m_window) {
        if (isHitTestVisible(widget) || m_systemButtons.values().contains(widget)) {
            return true;
        }
        widget = widget->parentWidget();
    }
    return false;
}

bool WidgetWindowAgent::isInTitleBar(const QPoint &position) const
{
    if (!m_titleBar || !m_titleBar->isVisible() || isInteractive(position)) {
        return false;
    }
    return m_titleBar->rect().contains(m_titleBar->mapFrom(m_window, position));
}

Qt::Edges WidgetWindowAgent::edgesAt(const QPoint &position) const
{
    const QSize minimum = m_window->minimumSize();
    const QSize maximum = m_window->maximumSize();
    if (m_window->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)
        || isInteractive(position)) {
        return {};
    }
    // In a window that is hardly larger than its borders, not two opposite edges.
    Qt::Edges edges;
    if (minimum.width() < maximum.width()) {
        edges.setFlag(Qt::LeftEdge, position.x() < resizeBorder);
        edges.setFlag(Qt::RightEdge, !edges.testFlag(Qt::LeftEdge)
                                         && position.x() >= m_window->width() - resizeBorder);
    }
    if (minimum.height() < maximum.height()) {
        edges.setFlag(Qt::TopEdge, position.y() < resizeBorder);
        edges.setFlag(Qt::BottomEdge, !edges.testFlag(Qt::TopEdge)
                                          && position.y() >= m_window->height() - resizeBorder);
    }
    return edges;
}

Qt::WindowFrameSection WidgetWindowAgent::sectionAt(const QPoint &position) const
{
    if (const Qt::Edges edges = edgesAt(position)) {
        return sectionOf(edges);
    }
    return isInTitleBar(position) ? Qt::TitleBarArea : Qt::NoSection;
}

// An override cursor leaves the cursors of the widgets unchanged.
void WidgetWindowAgent::showCursor(Qt::Edges edges)
{
    if (m_cursorEdges == edges) {
        return;
    }
    if (m_cursorEdges) {
        QGuiApplication::restoreOverrideCursor();
    }
    m_cursorEdges = edges;
    if (m_cursorEdges) {
        QGuiApplication::setOverrideCursor(cursorFor(edges));
    }
}

} // namespace QWK
