// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ApplicationStyle.h"

#include <QPainter>
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

} // namespace

ApplicationStyle::ApplicationStyle()
    : QProxyStyle(u"fusion"_s)
{
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

QPixmap ApplicationStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const
{
    // A tint would blur the icon of the very row that is about to be started.
    return mode == QIcon::Selected ? pixmap
                                   : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}
