// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QWidget>

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

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isMainWindowShowing() const;
    void toggleMainWindow();
    void openMenu(const QPoint &globalPosition);

    Settings *m_settings;
    ThemeManager *m_theme;
    QWidget *m_mainWindow;
    QPoint m_dragOffset;
    bool m_dragged = false;
    bool m_wasMainWindowShowing = false; // when the button was pressed
};
