// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ApplicationStyle.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleOption>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

QColor foreground(const QStyleOption &option, const QWidget *widget)
{
    return option.palette.color(widget ? widget->foregroundRole() : QPalette::WindowText);
}

void drawFocusFrame(const QStyleOption &option, QPainter &painter, const QWidget *widget)
{
    // The option's rectangle fits the text of a button tightly, so frame the whole widget.
    const QRectF rect = qobject_cast<const QPushButton *>(widget)
                            ? QRectF(widget->rect()).adjusted(3, 3, -3, -3)
                            : QRectF(option.rect);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(foreground(option, widget), 1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
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

// The sheet rounds the menu; without a compositor its corners would show, so mask them.
QRegion menuRegion(const QRect &rect)
{
    constexpr qreal radius = 10; // as in the sheet
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return QRegion(path.toFillPolygon().toPolygon());
}

// Qt draws no arrow once the sheet styles the drop-down button without an image for it.
void drawArrow(QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    QRectF arrowRect =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, &box);
    const QPointF middle = arrowRect.center();
    const QPointF arrow[] = {middle + QPointF(-4, -2), middle + QPointF(0, 2),
                             middle + QPointF(4, -2)};
    QPainter painter(&box);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(foreground(option, &box), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(arrow, 3);
}

// Colours of marks, visible on every background that the sheet gives to a control.
constexpr QRgb grey = 0xff8e8e93;
constexpr QRgb green = 0xff2f9e44;
constexpr QRgb red = 0xffe5484d;

// The colour of a progress bar. The percentage on the bar has the text colour; the highlight colour
// of some desktops is too close to it.
QColor progressColor(const QPalette &palette)
{
    return palette.color(QPalette::WindowText).lightness() > 127 ? QColor(0x00, 0x5f, 0xb8)
                                                                 : QColor(0x64, 0xb5, 0xff);
}

// Draws a mark of 16 x 16 pixels with a pen of this colour.
QIcon markIcon(QRgb color, qreal penWidth, const QList<QPolygonF> &lines)
{
    constexpr int size = 16;
    QIcon icon;
    for (const int ratio : {1, 2, 3}) {
        QPixmap pixmap(QSize(size, size) * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(color), penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        for (const QPolygonF &line : lines) {
            painter.drawPolyline(line);
        }
        icon.addPixmap(pixmap);
    }
    return icon;
}

QIcon crossIcon(QRgb color, qreal penWidth)
{
    return markIcon(color, penWidth,
                    {{{QPointF(4, 4), QPointF(12, 12)}}, {{QPointF(12, 4), QPointF(4, 12)}}});
}

QIcon tickIcon(QRgb color, qreal penWidth)
{
    return markIcon(color, penWidth, {{{QPointF(3, 8.5), QPointF(6.5, 12), QPointF(13, 4.5)}}});
}

// The widget in which a scroll area places its scroll bar.
bool isScrollBarContainer(const QWidget &widget)
{
    return widget.objectName() == "qt_scrollarea_vcontainer"_L1
           || widget.objectName() == "qt_scrollarea_hcontainer"_L1;
}

// Qt shows the message of a tray icon in a private class if the desktop cannot show it.
bool isCloseButtonOfTrayMessage(const QWidget &widget)
{
    return qobject_cast<const QPushButton *>(&widget) && widget.parentWidget()
           && widget.parentWidget()->inherits("QBalloonTip");
}

// The sheet would make it as high as other buttons, though its size is fixed.
void makeFlat(QPushButton &button)
{
    const QString sheet = u"min-height: %1px; padding: 0; border: none; background: transparent"_s;
    if (button.styleSheet().isEmpty()) { // setting it polishes the button again
        button.setIcon(crossIcon(grey, 1.5));
        button.setStyleSheet(sheet.arg(button.iconSize().height()));
    }
}

// Adds the space between the rows of a combo box, because the sheet cannot.
class ComboRowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 12);
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus; // the selection already marks the current row
    }
};

} // namespace

ApplicationStyle::ApplicationStyle()
    : QProxyStyle(u"fusion"_s)
{
}

void ApplicationStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (isScrollBarContainer(*widget)) {
        // The sheet gives every plain widget the background of the window; the scroll area has
        // another one.
        widget->setAttribute(Qt::WA_NoSystemBackground);
    }
    if (isCloseButtonOfTrayMessage(*widget)) {
        makeFlat(static_cast<QPushButton &>(*widget));
    }
    if (auto *box = qobject_cast<QComboBox *>(widget)) {
        box->installEventFilter(this);
        box->view()->installEventFilter(this);
        if (!dynamic_cast<ComboRowDelegate *>(box->itemDelegate())) {
            box->setItemDelegate(new ComboRowDelegate(box));
        }
    }
}

void ApplicationStyle::unpolish(QWidget *widget)
{
    widget->removeEventFilter(this);
    QProxyStyle::unpolish(widget);
}

void ApplicationStyle::drawControl(ControlElement element, const QStyleOption *option,
                                   QPainter *painter, const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionProgressBar *>(option);
    if (element != CE_ProgressBarContents || !bar) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    QStyleOptionProgressBar colored = *bar;
    colored.palette.setColor(QPalette::Highlight, progressColor(bar->palette));
    QProxyStyle::drawControl(element, &colored, painter, widget);
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
    if (hint == SH_ComboBox_Popup) {
        // Use a list below the box. A popup over the box computes its height without the frame and
        // the padding of the sheet, and hides some rows.
        return 0;
    }
    auto *mask = qstyleoption_cast<QStyleHintReturnMask *>(returnData);
    if (hint == SH_Menu_Mask && mask && option && qobject_cast<const QMenu *>(widget)) {
        mask->region = menuRegion(option->rect);
        return true;
    }
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

QIcon ApplicationStyle::standardIcon(StandardPixmap icon, const QStyleOption *option,
                                     const QWidget *widget) const
{
    switch (icon) {
    case SP_LineEditClearButton:
        return crossIcon(grey, 1.5);
    case SP_DialogOkButton:
    case SP_DialogYesButton:
        // The marks of the icon theme may be made for a background of the other brightness.
        return tickIcon(green, 2);
    case SP_DialogCancelButton:
    case SP_DialogNoButton:
        return crossIcon(red, 2);
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

QPixmap ApplicationStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const
{
    // Keep the colours of the icon in a selected row; the default would tint it.
    return mode == QIcon::Selected ? pixmap
                                   : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

bool ApplicationStyle::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride
        && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel)
        && qobject_cast<QAbstractItemView *>(watched)) {
        // The list of a combo box closes on this event without accepting it, and the key would then
        // trigger the shortcut of the window.
        event->accept();
        return true;
    }
    auto *box = qobject_cast<QComboBox *>(watched);
    if (!box || event->type() != QEvent::Paint) {
        return QProxyStyle::eventFilter(watched, event);
    }
    box->event(event);
    drawArrow(*box);
    return true;
}

void setApplicationSheet(const QString &sheet)
{
    // When a sheet replaces another one, Qt polishes each widget once for itself and once for each
    // of its ancestors; without an earlier sheet, only once.
    qApp->setStyleSheet(QString());
    qApp->setStyleSheet(sheet);
}
