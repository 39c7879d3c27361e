// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QSize>

class QListWidget;
class QResizeEvent;
class QStackedWidget;
class QWidget;

/// Returns the height in pixels of a list with rows of equal height: its rows, its padding and its
/// frame, but at most `available`, and at least one row. 0 for a list without rows. A row height of
/// 0 counts as one pixel.
int listHeight(int rowCount, int rowHeight, int frameWidth, int available);

/// Whether a resize from the window system answers one of the requested heights, which are in the
/// order of the requests. If so, removes that request and the older ones. If not, the user resized
/// the window, and all requests are removed.
bool takeAnswer(QList<int> &requestedHeights, int height, qreal devicePixelRatio);

/// Adapts the height of the window to its content. With the list, it is the base height, which is
/// that of everything except the list, plus the height of the rows; dragging an edge of the window
/// sets the limit of this sum. With a page, it is a fixed height until the user drags an edge. On a
/// screen that is smaller than fullWindowSize, the window is at most as large as the screen.
class WindowHeight : public QObject
{
    Q_OBJECT

public:
    /// The window becomes the parent. It must have its layout and its minimum width, which grows
    /// only if the content needs more. The list must be a page of the stack.
    WindowHeight(QWidget *window, QStackedWidget *stack, QListWidget *list);

    /// Widens the window at once if its content needs it. Fits its height to the list in the next
    /// pass of the event loop, once for all calls until then, and not while the stack shows a page.
    void scheduleUpdate();

    /// Hides the list until the window is fitted to it, in the next pass of the event loop. Call
    /// this when the list replaces a page.
    void hideList();

    /// Shows the stack, whose page replaces the list, without the height limits of the list, and
    /// gives the window its height for a page.
    void makeRoomForPage();

    /// Call this for each resize event of the window. A resize by the user sets the limit.
    void handleResize(const QResizeEvent &event);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The list is empty and stays hidden; the window is resized next.
    void listHidden();

private:
    bool isAnswer(int height);
    bool isListCurrent() const;
    QSize room() const;
    void fitToScreen();
    void update();
    void collapseStack();
    void resizeWindow(int height, int minimum);
    void widen();
    int listHeightFor(int height) const;
    void rememberRequest(int height);

    QWidget *m_window;
    QStackedWidget *m_stack;
    QListWidget *m_list;
    int m_minimumWidth;
    int m_expandedHeight; // limit of the window height for the rows
    int m_baseHeight = 0; // window height without the rows
    bool m_isUpdatePending = false;
    qreal m_devicePixelRatio;
    QList<int> m_requestedHeights; // unanswered by the window system, oldest first
    int m_answeredHeight = 0;      // of the last resize; 0 if it answered no request
};
