// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>
#include <QWidget>

#include <optional>

class Settings;
class ThemeManager;

/// A small round button that stays on top of all windows. A click shows or hides the main window, a
/// drag moves the button, and its menu can turn it off. The owner sets the first position and shows
/// or hides it.
class FloatIcon : public QWidget
{
    Q_OBJECT

public:
    /// The objects are not owned and must outlive the icon. Without a main window, a click only
    /// stores the position.
    FloatIcon(Settings *settings, ThemeManager *theme, QWidget *mainWindow,
              QWidget *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void updateMask();
    bool isMainWindowShowing() const;
    void toggleMainWindow();
    void openMenu(const QPoint &globalPosition);

    Settings *m_settings;
    ThemeManager *m_theme;
    QWidget *m_mainWindow;
    QPoint m_dragOffset;
    bool m_isDragged = false;
    bool m_wasMainWindowShowing = false; // when the button was pressed
};

/// The start position of the icon's top left corner. Returns the stored position even if no screen
/// shows it. If a stored coordinate is negative, returns a position in the lower right corner of
/// the primary screen's available geometry, if there is a screen.
QPoint floatIconPosition(const QPoint &stored, const std::optional<QRect> &available);
