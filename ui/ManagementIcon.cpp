// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ManagementIcon.h"

#include "ui/VaskelIcon.h"
#include "widgets/AccessibleFactory.h"

#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

class AccessibleManagementIcon : public QAccessibleWidget
{
public:
    explicit AccessibleManagementIcon(ManagementIcon *icon)
        : QAccessibleWidget(icon, QAccessible::Button)
    {
    }

    QStringList actionNames() const override
    {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name == pressAction()) {
            Q_EMIT qobject_cast<ManagementIcon *>(widget())->clicked();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }
};

} // namespace

ManagementIcon::ManagementIcon(QWidget *parent)
    : QWidget(parent)
    , m_icon(vaskelIcon())
{
    setFixedSize(32, 32);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    installAccessible<ManagementIcon, AccessibleManagementIcon>();
}

void ManagementIcon::enterEvent(QEnterEvent *event)
{
    m_isHovered = true;
    update();
    QWidget::enterEvent(event);
}

void ManagementIcon::leaveEvent(QEvent *event)
{
    m_isHovered = false;
    m_isPressed = false;
    update();
    QWidget::leaveEvent(event);
}

void ManagementIcon::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        m_isPressed = true;
        update();
    }
    QWidget::mousePressEvent(event);
}

void ManagementIcon::mouseReleaseEvent(QMouseEvent *event)
{
    const bool wasPressed = std::exchange(m_isPressed, false);
    update();
    if (wasPressed && event->button() == Qt::LeftButton
        && rect().contains(event->position().toPoint())) {
        Q_EMIT clicked();
    }
    QWidget::mouseReleaseEvent(event);
}

void ManagementIcon::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT clicked();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ManagementIcon::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_isHovered || m_isPressed) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(128, 128, 128, m_isPressed ? 76 : 45));
        painter.drawEllipse(rect().adjusted(1, 1, -1, -1));
    }
    m_icon.paint(&painter, QRect(5, 5, 22, 22), Qt::AlignCenter, QIcon::Normal, QIcon::Off);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(backgroundRole());
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}
