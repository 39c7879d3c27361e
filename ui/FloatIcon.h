// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>
#include <QWidget>

#include <optional>

class Settings;
class ThemeManager;

/// A small round button above all windows of the desktop. A click brings the window up or hides it,
/// a drag moves the button, and its menu can switch it off. Where it stands at first and whether it
/// shows is for its owner to say.
class FloatIcon : public QWidget
{
    Q_OBJECT

public:
    /// None of these is owned, and all must outlive the icon. Without a window a click only stores
    /// the place.
    FloatIcon(Settings *settings, ThemeManager *theme, QWidget *mainWindow,
              QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool showsMainWindow() const;
    void toggleMainWindow();
    void openMenu(const QPoint &globalPosition);

    Settings *m_settings;
    ThemeManager *m_theme;
    QWidget *m_mainWindow;
    QPoint m_dragOffset;
    bool m_dragged = false;
    bool m_showedMainWindow = false; // at the press
};

/// The start position of the icon's top left corner. Returns the stored position even if no screen
/// shows it. If a stored coordinate is negative, returns a position in the lower right corner of
/// the primary screen's available geometry, if there is a screen.
QPoint floatIconPosition(const QPoint &stored, const std::optional<QRect> &available);
