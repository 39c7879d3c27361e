// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <functional>

class QWidget;

/// The contrast of two colours by the W3C's accessibility guidelines, from 1 to 21.
double contrast(const QColor &one, const QColor &other);

/// Colours as widgets are painted, for their contrast.
namespace painted {

/// The colours of a text or of a mark, and of what is behind it.
struct Pair
{
    QColor foreground;
    QColor background;
};

/// A text whose pixels all have its colour, and one of the same length without pixels.
inline const QString ink = QStringLiteral("████");
inline const QString blank = QStringLiteral("    ");

/// The widget or a part of it, with what shows through it.
QImage picture(const QWidget &widget, const QRect &part);
QImage picture(const QWidget &widget);

/// The colours of the pixel that differs most from the same pixel of the other picture.
Pair strongestChange(const QImage &with, const QImage &without);

/// The colours of the pixel that differs most from the commonest colour.
Pair strongestPixel(const QImage &image);

/// The colours of a text that the function sets.
Pair textColors(QWidget &widget, const std::function<void(const QString &)> &setText);

/// The same for a label, a line edit or a button.
template <typename Widget> Pair textColors(Widget &widget)
{
    return textColors(widget, [&widget](const QString &text) { widget.setText(text); });
}

/// The colours of what shows that the widget, or the row in this part of it, has the focus from the
/// keyboard. The background is the commonest colour inside.
Pair focusColors(QWidget &widget, const QRect &part);
Pair focusColors(QWidget &widget);

/// Moves the mouse pointer to this position of the widget.
void hover(QWidget &widget, const QPoint &position);

} // namespace painted
