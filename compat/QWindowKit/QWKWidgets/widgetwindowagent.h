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

/// Takes the system's frame off a window and puts a widget in the place of its title bar. The
/// window system itself moves and resizes the window, so that the resize events are spontaneous.
///
/// The outermost pixels of a window that is neither maximised nor of a fixed size resize it, also
/// where a child widget lies. Widgets see every event but the presses that start something here.
class WidgetWindowAgent : public WindowAgentBase
{
    Q_OBJECT

public:
    explicit WidgetWindowAgent(QObject *parent = nullptr);
    ~WidgetWindowAgent() override;

    /// Takes over a top-level widget, best before it is shown. False, with nothing changed, for a
    /// child widget or if the agent has a window already.
    bool setup(QWidget *window);

    /// The widget, in the window, by which the window is dragged.
    QWidget *titleBar() const;
    void setTitleBar(QWidget *widget);

    /// The button that has this role. Its clicks are its own and do not drag the window.
    QWidget *systemButton(SystemButton button) const;
    void setSystemButton(SystemButton button, QWidget *widget);

    /// Whether presses on this widget go to it though it lies in the title bar or at an edge.
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
    QPointer<QWindow> m_nativeWindow;     ///< changes when the widget is given another one
    std::unique_ptr<SystemFrame> m_frame; ///< of the native window, where the system has one
    QPointer<QWidget> m_titleBar;
    QHash<SystemButton, QPointer<QWidget>> m_systemButtons;
    QList<QPointer<QWidget>> m_hitTestVisible;

    Qt::Edges m_cursorEdges;   ///< those whose cursor is shown
    bool m_pressTaken = false; ///< the left button's press did not reach a widget
};

} // namespace QWK
