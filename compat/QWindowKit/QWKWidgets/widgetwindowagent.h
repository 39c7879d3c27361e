// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <QWKCore/windowagentbase.h>

#include <memory>

namespace QWK {

class SystemFrame;

/// Removes the system's frame from a window and makes a widget its title bar. The window system
/// itself moves and resizes the window, so its resize events are spontaneous.
///
/// The outermost pixels resize the window, unless it is maximised, fills the screen or has a fixed
/// size; a child widget gets the presses there only if it is a system button or hit-test visible.
///
/// The signals are there because the library has them; the program does not connect them.
class WidgetWindowAgent : public WindowAgentBase
{
    Q_OBJECT

public:
    explicit WidgetWindowAgent(QObject *parent = nullptr);
    ~WidgetWindowAgent() override;

    /// Takes over a top-level widget, preferably before it is shown. Returns false and changes
    /// nothing for a child widget, or if the agent already has a window.
    bool setup(QWidget *window);

    /// The child widget by which the user drags the window.
    QWidget *titleBar() const;
    void setTitleBar(QWidget *widget);

    /// The widget for this button. A press on it does not drag the window.
    QWidget *systemButton(SystemButton button) const;
    void setSystemButton(SystemButton button, QWidget *widget);

    /// Whether the widget gets its presses even in the title bar or at an edge.
    bool isHitTestVisible(const QWidget *widget) const;
    void setHitTestVisible(QWidget *widget, bool visible = true);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void titleBarChanged(QWidget *widget);
    void systemButtonChanged(QWK::WindowAgentBase::SystemButton button, QWidget *widget);

private:
    void watchNativeWindow();
    bool handleWindowEvent(QEvent *event);
    bool handlePress(const QMouseEvent *event);
    bool handleMove(const QMouseEvent *event);
    bool handleRelease(const QMouseEvent *event);

    bool isInteractive(const QPoint &position) const;
    bool isInTitleBar(const QPoint &position) const;
    Qt::Edges edgesAt(const QPoint &position) const;
    Qt::WindowFrameSection sectionAt(const QPoint &position) const;
    void showCursor(Qt::Edges edges);

    QPointer<QWidget> m_window;
    QPointer<QWindow> m_nativeWindow;     ///< may change with QEvent::WinIdChange
    std::unique_ptr<SystemFrame> m_frame; ///< of the native window; null where there is none
    QPointer<QWidget> m_titleBar;
    QHash<SystemButton, QPointer<QWidget>> m_systemButtons;
    QList<QPointer<QWidget>> m_hitTestVisible;

    Qt::Edges m_cursorEdges;   ///< those whose cursor is shown
    bool m_pressTaken = false; ///< no widget got the left button's press
};

} // namespace QWK
