// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ApplicationStyle.h"

#include <QComboBox>
#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

QColor foreground(const QStyleOption &option, const QWidget *widget)
{
    return option.palette.color(widget ? widget->foregroundRole() : QPalette::WindowText);
}

void drawFocusFrame(const QStyleOption &option, QPainter &painter, const QWidget *widget)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(foreground(option, widget), 1));
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

void drawCheckBox(const QStyleOption &option, QPainter &painter)
{
    const QColor text = option.palette.color(
        option.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text);
    QColor frame = text;
    frame.setAlphaF(0.6F);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(frame, 1));
    const QRectF box = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(box, 4, 4);

    if (option.state & QStyle::State_On) {
        const QPointF tick[] = {box.topLeft() + QPointF(0.22 * box.width(), 0.52 * box.height()),
                                box.topLeft() + QPointF(0.42 * box.width(), 0.72 * box.height()),
                                box.topLeft() + QPointF(0.79 * box.width(), 0.28 * box.height())};
        painter.setPen(QPen(text, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(tick, 3);
    }
}

// The sheet draws a round frame in a window that has corners, and what lies outside shows through
// nowhere but on a desktop that blends windows.
QRegion menuShape(const QRect &rect)
{
    constexpr qreal radius = 10; // that of the sheet
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return QRegion(path.toFillPolygon().toPolygon());
}

// The sheet styles the button of a combo box, and Qt then draws no arrow that the sheet does not
// bring.
void drawArrow(QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    QRectF place =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, &box);
    const QPointF middle = place.center();
    const QPointF arrow[] = {middle + QPointF(-4, -2), middle + QPointF(0, 2),
                             middle + QPointF(4, -2)};
    QPainter painter(&box);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(foreground(option, &box), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(arrow, 3);
}

} // namespace

ApplicationStyle::ApplicationStyle()
    : QProxyStyle(u"fusion"_s)
{
}

void ApplicationStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QComboBox *>(widget)) {
        widget->installEventFilter(this);
    }
}

void ApplicationStyle::unpolish(QWidget *widget)
{
    widget->removeEventFilter(this);
    QProxyStyle::unpolish(widget);
}

void ApplicationStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                     QPainter *painter, const QWidget *widget) const
{
    if (element != PE_FrameFocusRect && element != PE_IndicatorItemViewItemCheck) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (element == PE_FrameFocusRect) {
        drawFocusFrame(*option, *painter, widget);
    } else {
        drawCheckBox(*option, *painter);
    }
    painter->restore();
}

int ApplicationStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *returnData) const
{
    auto *mask = qstyleoption_cast<QStyleHintReturnMask *>(returnData);
    if (hint != SH_Menu_Mask || !mask || !option || !qobject_cast<const QMenu *>(widget)) {
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
    mask->region = menuShape(option->rect);
    return true;
}

QPixmap ApplicationStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const
{
    // A tint would blur the icon of the very row that is about to be started.
    return mode == QIcon::Selected ? pixmap
                                   : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

bool ApplicationStyle::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QComboBox *>(watched);
    if (!box || event->type() != QEvent::Paint) {
        return QProxyStyle::eventFilter(watched, event);
    }
    box->event(event);
    drawArrow(*box);
    return true;
}
