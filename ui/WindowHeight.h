// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>

class QListWidget;
class QResizeEvent;
class QStackedWidget;
class QWidget;

/// The height in pixels for a list of equally tall rows that may take up what is available: all of
/// its rows and its frame, or less, but one row at least. 0 for a list without rows. A row that
/// claims no height counts as one pixel.
int listHeight(int rowCount, int rowHeight, int frameWidth, int available);

/// Whether a resize that came from the window system answers one of the requested heights, which
/// stand in the order of the requests. That one and the older ones are removed. A height that was
/// not requested is the user's: false, and all requests are removed.
bool takeAnswer(QList<int> &requestedHeights, int height, qreal devicePixelRatio);

/// Gives the window the height of what it shows. With the list it is the base height, of all that
/// is around the list, and the height of the rows, up to a limit which the user sets by dragging
/// the window's edge. With a page it is a fixed height, until the user drags the edge.
class WindowHeight : public QObject
{
    Q_OBJECT

public:
    /// The window becomes the owner. It has its layout and its minimum width, which is kept unless
    /// the content needs more; the list is one of the pages in the stack.
    WindowHeight(QWidget *window, QStackedWidget *stack, QListWidget *list);

    /// Fits the window to the list in the next pass of the event loop, once for any number of
    /// calls. Does nothing while a page shows.
    void scheduleUpdate();

    /// Hides the list and fits the window to it in the next pass of the event loop. Call it when
    /// the list comes back in the place of a page.
    void hideList();

    /// Shows the page that has come in the place of the list, without the limits of the list.
    void showPage();

    /// Call it for each resize event of the window. One that the user caused sets the limit.
    void handleResize(const QResizeEvent &event);

Q_SIGNALS:
    /// The window was fitted to a list without rows, which is hidden.
    void listHidden();

private:
    bool isOnList() const;
    void update();
    void collapseStack();
    void resizeWindow(int height, int minimum);
    int listHeightFor(int height) const;
    void rememberRequest(int height);

    QWidget *m_window;
    QStackedWidget *m_stack;
    QListWidget *m_list;
    int m_minimumWidth;
    int m_expandedHeight; // what the window may grow to for its rows
    int m_baseHeight = 0; // what it takes without them
    bool m_isUpdatePending = false;
    QList<int> m_requestedHeights; // not yet answered by the window system, oldest first
};
