// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowHeight.h"

#include "ui/ScreenArea.h"

#include <QCoreApplication>
#include <QLayout>
#include <QListWidget>
#include <QResizeEvent>
#include <QStackedWidget>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr int initialHeight = fullWindowSize.height(); // the first limit, the height of a page
constexpr int listPadding = 5;                         // above the first row and below the last one
constexpr qsizetype maximumRequests = 16; // more than a window system leaves unanswered
constexpr int maximumRoundingError = 2;   // in pixels

// With a fractional device pixel ratio, heights are rounded when converted to device pixels and
// back.
bool isSameHeight(int requested, int answered, qreal devicePixelRatio)
{
    const bool isRounded = devicePixelRatio != std::floor(devicePixelRatio);
    return std::abs(requested - answered) <= (isRounded ? maximumRoundingError : 0);
}

} // namespace

int listHeight(int rowCount, int rowHeight, int frameWidth, int available)
{
    if (rowCount == 0) {
        return 0;
    }
    const int row = std::max(rowHeight, 1);
    const int wanted = row * rowCount + 2 * (frameWidth + listPadding);
    return std::min(wanted, std::max(available, row));
}

// Some requests get no answer, but the answers keep the order of the requests.
bool takeAnswer(QList<int> &requestedHeights, int height, qreal devicePixelRatio)
{
    const auto request =
        std::find_if(requestedHeights.cbegin(), requestedHeights.cend(), [&](int requested) {
            return isSameHeight(requested, height, devicePixelRatio);
        });
    const bool isAnswer = request != requestedHeights.cend();
    requestedHeights.erase(requestedHeights.cbegin(), isAnswer ? request + 1 : request);
    return isAnswer;
}

WindowHeight::WindowHeight(QWidget *window, QStackedWidget *stack, QListWidget *list)
    : QObject(window)
    , m_window(window)
    , m_stack(stack)
    , m_list(list)
    , m_minimumWidth(window->minimumWidth())
    , m_expandedHeight(initialHeight)
    , m_devicePixelRatio(window->devicePixelRatioF())
{
    // Keep the spacing above a hidden stack, so that the height with the list is the base height
    // plus the height of the list.
    QSizePolicy policy = m_stack->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_stack->setSizePolicy(policy);
    m_window->installEventFilter(this);
}

void WindowHeight::scheduleUpdate()
{
    widen(); // at once, so that the window has its width when it is first placed on the screen
    if (!m_isUpdatePending) {
        m_isUpdatePending = true;
        QTimer::singleShot(0ms, this, &WindowHeight::update);
    }
}

void WindowHeight::hideList()
{
    collapseStack();
    scheduleUpdate();
}

void WindowHeight::makeRoomForPage()
{
    m_stack->setVisible(true);
    m_stack->setMinimumHeight(0);
    m_stack->setMaximumHeight(QWIDGETSIZE_MAX);
    // setMinimumHeight() would override the minimum height of the layout; this leaves it in effect.
    const QSize limit = room();
    m_window->setMinimumSize(
        std::min(std::max(m_window->minimumWidth(), m_minimumWidth), limit.width()), 0);
    if (const QSize size(std::min(m_window->width(), limit.width()),
                         std::min(initialHeight, limit.height()));
        m_window->size() != size) {
        m_window->resize(size);
    }
}

void WindowHeight::handleResize(const QResizeEvent &event)
{
    const int height = event.size().height();
    // On a screen of another ratio the same window has another height, which the user did not set.
    const qreal ratio = std::exchange(m_devicePixelRatio, m_window->devicePixelRatioF());
    if (!event.spontaneous()) {
        rememberRequest(height);
    } else if (ratio != m_devicePixelRatio) {
        m_requestedHeights.clear();
    } else if (!isAnswer(height) && height != event.oldSize().height() && isListCurrent()
               && m_stack->isVisible() && m_list->count() > 0) {
        m_expandedHeight = height;
        m_stack->setFixedHeight(listHeightFor(height));
    }
}

// A window manager may repeat an answer, with an event of its own beside that of the X server. The
// next request can come in between.
bool WindowHeight::isAnswer(int height)
{
    const qreal ratio = m_window->devicePixelRatioF();
    if (!m_requestedHeights.isEmpty() && isSameHeight(m_answeredHeight, height, ratio)) {
        return true;
    }
    const bool isAnswer = takeAnswer(m_requestedHeights, height, ratio);
    m_answeredHeight = isAnswer ? height : 0;
    return isAnswer;
}

bool WindowHeight::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && !event->spontaneous()) {
        fitToScreen();
    } else if (event->type() == QEvent::ScreenChangeInternal) {
        // The window may not have its position on the new screen yet.
        QTimer::singleShot(0ms, this, &WindowHeight::fitToScreen);
    }
    return QObject::eventFilter(watched, event);
}

bool WindowHeight::isListCurrent() const
{
    return m_stack->currentWidget() == m_list;
}

// The size that a small screen limits the window to.
QSize WindowHeight::room() const
{
    const QSize available = availableArea(m_window->screen()).size();
    return {available.width() < fullWindowSize.width() ? available.width() : QWIDGETSIZE_MAX,
            available.height() < fullWindowSize.height() ? available.height() : QWIDGETSIZE_MAX};
}

void WindowHeight::fitToScreen()
{
    const QSize limit = room();
    const bool isTooLarge =
        m_window->width() > limit.width() || m_window->height() > limit.height();
    const bool isTooNarrow = m_window->width() < std::min(m_minimumWidth, limit.width());
    if (!isTooLarge && !isTooNarrow) {
        return;
    }
    if (isListCurrent()) {
        update();
    } else {
        makeRoomForPage();
    }
}

void WindowHeight::update()
{
    m_isUpdatePending = false;
    if (!isListCurrent()) {
        return;
    }

    collapseStack();
    if (QWidget *parent = m_stack->parentWidget()) {
        parent->updateGeometry();
    }
    m_window->layout()->activate();
    m_baseHeight = m_window->sizeHint().height();

    const int stackHeight = listHeightFor(std::min(m_expandedHeight, room().height()));
    if (stackHeight > 0) {
        m_stack->setFixedHeight(stackHeight);
        m_stack->show();
    } else {
        Q_EMIT listHidden();
    }
    m_window->layout()->activate();
    resizeWindow(stackHeight + m_baseHeight, listHeightFor(0) + m_baseHeight);
    // Showing the list has posted an UpdateLater event. Deliver it now, or the list may be painted
    // twice.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
}

void WindowHeight::collapseStack()
{
    m_stack->hide();
    m_stack->setFixedHeight(0);
    m_stack->updateGeometry();
}

// The list has a fixed height, so the minimum of the layout would keep the user from making the
// window smaller than its rows. The minimum is lowered before the resize and raised after it, so
// that the window is resized only once.
void WindowHeight::resizeWindow(int height, int minimum)
{
    const QSize limit = room();
    widen();
    m_window->setMinimumHeight(std::min(m_window->minimumHeight(), minimum));
    if (const QSize size(std::min(m_window->width(), limit.width()), height);
        m_window->size() != size) {
        m_window->resize(size);
    }
    m_window->setMinimumHeight(minimum);
}

// Many pins make the window wider; its right edge, with the close button, stays on the screen.
void WindowHeight::widen()
{
    const int minimum =
        std::max(std::min(m_minimumWidth, room().width()), m_window->minimumSizeHint().width());
    const bool grows = minimum > m_window->width();
    m_window->setMinimumWidth(minimum);
    if (grows && m_window->isVisible()) {
        const QRect area = availableArea(m_window->screen());
        const int last = std::max(area.left(), area.right() + 1 - m_window->width());
        if (m_window->x() > last) {
            m_window->move(last, m_window->y());
        }
    }
}

int WindowHeight::listHeightFor(int height) const
{
    return listHeight(m_list->count(), m_list->sizeHintForRow(0), m_list->frameWidth(),
                      height - m_baseHeight);
}

// After several quick resizes by the program, the answer of the window system to an earlier request
// arrives as a spontaneous resize. It must not count as a resize by the user.
void WindowHeight::rememberRequest(int height)
{
    if (m_requestedHeights.size() == maximumRequests) {
        m_requestedHeights.removeFirst();
    }
    m_requestedHeights.append(height);
}
