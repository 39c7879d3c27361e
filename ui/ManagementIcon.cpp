// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ManagementIcon.h"

#include "ui/ProgramIcon.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

ManagementIcon::ManagementIcon(QWidget *parent)
    : QWidget(parent)
    , m_icon(programIcon())
{
    setFixedSize(32, 32);
    setCursor(Qt::PointingHandCursor);
}

void ManagementIcon::enterEvent(QEnterEvent *event)
{
    m_hovered = true;
    update();
    QWidget::enterEvent(event);
}

void ManagementIcon::leaveEvent(QEvent *event)
{
    m_hovered = false;
    m_pressed = false;
    update();
    QWidget::leaveEvent(event);
}

void ManagementIcon::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        m_pressed = true;
        update();
    }
    QWidget::mousePressEvent(event);
}

void ManagementIcon::mouseReleaseEvent(QMouseEvent *event)
{
    const bool wasPressed = std::exchange(m_pressed, false);
    update();
    if (wasPressed && event->button() == Qt::LeftButton
        && rect().contains(event->position().toPoint())) {
        Q_EMIT clicked();
    }
    QWidget::mouseReleaseEvent(event);
}

void ManagementIcon::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_hovered || m_pressed) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(128, 128, 128, m_pressed ? 76 : 45));
        painter.drawEllipse(rect().adjusted(1, 1, -1, -1));
    }
    m_icon.paint(&painter, QRect(5, 5, 22, 22), Qt::AlignCenter, QIcon::Normal, QIcon::Off);
}
