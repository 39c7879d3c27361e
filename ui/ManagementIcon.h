// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QWidget>

/// The program's icon as a round button of fixed size at the right end of the command box. A click
/// does not focus it; Tab does, and Space or Enter then presses it.
class ManagementIcon : public QWidget
{
    Q_OBJECT

public:
    explicit ManagementIcon(QWidget *parent = nullptr);

Q_SIGNALS:
    /// The icon was clicked with the left button, or pressed by keyboard or by a screen reader.
    void clicked();

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon m_icon;
    bool m_isHovered = false;
    bool m_isPressed = false;
};
