// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

/// The widget style below the style sheet. It draws focus frames, check boxes of item views, the
/// clear button, the marks on the buttons of a message and the close button of a tray message in
/// the same way on every desktop, visible in both palettes. A progress bar has a colour on which
/// the percentage can be read. The background of a scroll area reaches behind its scroll bars. The
/// list of a combo box opens below the box, and Escape closes the list without hiding the window.
class ApplicationStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ApplicationStyle();

    using QProxyStyle::polish;
    using QProxyStyle::unpolish;
    void polish(QWidget *widget) override;
    void unpolish(QWidget *widget) override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                const QStyleOption *option) const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// Sets the application's style sheet, faster than QApplication::setStyleSheet() replaces one.
void setApplicationSheet(const QString &sheet);
