// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

/// What the style sheet leaves to the widget style below it: the same on every desktop, and drawn
/// in the colours that the sheet has given to the widget, so that it can be made out in both
/// palettes.
class ApplicationStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ApplicationStyle();

    using QProxyStyle::polish;
    using QProxyStyle::unpolish;
    void polish(QWidget *widget) override;
    void unpolish(QWidget *widget) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                const QStyleOption *option) const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
