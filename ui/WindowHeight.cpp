// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowHeight.h"

#include <QLayout>
#include <QListWidget>
#include <QResizeEvent>
#include <QStackedWidget>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>

using namespace std::chrono_literals;

namespace {

constexpr int initialHeight = 460;        // the limit at first, and the height for any page
constexpr int listPadding = 5;            // above the first and below the last row
constexpr qsizetype maximumRequests = 16; // more than any window system leaves unanswered
constexpr int maximumRoundingError = 2;   // of a height, between this program and the screen

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

// Answers come in the order of the requests, though not to each of them. Where a pixel here is no
// whole number of the screen's, the heights are rounded there and back.
bool takeAnswer(QList<int> &requestedHeights, int height, qreal devicePixelRatio)
{
    const int tolerance =
        devicePixelRatio == std::floor(devicePixelRatio) ? 0 : maximumRoundingError;
    const auto request =
        std::find_if(requestedHeights.cbegin(), requestedHeights.cend(),
                     [&](int requested) { return std::abs(requested - height) <= tolerance; });
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
{
    // The spacing above the stack stays when the stack is hidden, so that the window without the
    // list and the list add up to the window with it.
    QSizePolicy policy = m_stack->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_stack->setSizePolicy(policy);
}

void WindowHeight::scheduleUpdate()
{
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

void WindowHeight::showPage()
{
    m_stack->setVisible(true);
    m_stack->setMinimumHeight(0);
    m_stack->setMaximumHeight(QWIDGETSIZE_MAX);
    // Unlike setMinimumHeight(), this leaves the minimum height to the layout.
    m_window->setMinimumSize(m_window->minimumWidth(), 0);
    if (m_window->height() != initialHeight) {
        m_window->resize(m_window->width(), initialHeight);
    }
}

void WindowHeight::handleResize(const QResizeEvent &event)
{
    const int height = event.size().height();
    if (!event.spontaneous()) {
        rememberRequest(height);
    } else if (!takeAnswer(m_requestedHeights, height, m_window->devicePixelRatioF())
               && height != event.oldSize().height() && isOnList() && m_stack->isVisible()
               && m_list->count() > 0) {
        m_expandedHeight = height;
        m_stack->setFixedHeight(listHeightFor(height));
    }
}

bool WindowHeight::isOnList() const
{
    return m_stack->currentWidget() == m_list;
}

void WindowHeight::update()
{
    m_isUpdatePending = false;
    if (!isOnList()) {
        return;
    }

    collapseStack();
    if (QWidget *parent = m_stack->parentWidget()) {
        parent->updateGeometry();
    }
    m_window->layout()->activate();
    m_baseHeight = m_window->sizeHint().height();

    const int stackHeight = listHeightFor(m_expandedHeight);
    if (stackHeight > 0) {
        m_stack->setFixedHeight(stackHeight);
        m_stack->show();
    } else {
        Q_EMIT listHidden();
    }
    m_window->layout()->activate();
    resizeWindow(stackHeight + m_baseHeight, listHeightFor(0) + m_baseHeight);
}

void WindowHeight::collapseStack()
{
    m_stack->hide();
    m_stack->setFixedHeight(0);
    m_stack->updateGeometry();
}

// The layout's own minimum would not let the user drag the window smaller than its rows, as the
// list has a fixed height. It is lowered before the resize and raised after it, so that the window
// takes its height in one step. Many pins make the window wider.
void WindowHeight::resizeWindow(int height, int minimum)
{
    m_window->setMinimumWidth(std::max(m_minimumWidth, m_window->minimumSizeHint().width()));
    m_window->setMinimumHeight(std::min(m_window->minimumHeight(), minimum));
    if (m_window->height() != height) {
        m_window->resize(m_window->width(), height);
    }
    m_window->setMinimumHeight(minimum);
}

int WindowHeight::listHeightFor(int height) const
{
    return listHeight(m_list->count(), m_list->sizeHintForRow(0), m_list->frameWidth(),
                      height - m_baseHeight);
}

// When the program resizes the window several times in quick succession, the window system's answer
// to an earlier request comes as a spontaneous resize, which must not be taken for the user's.
void WindowHeight::rememberRequest(int height)
{
    if (m_requestedHeights.size() == maximumRequests) {
        m_requestedHeights.removeFirst();
    }
    m_requestedHeights.append(height);
}
