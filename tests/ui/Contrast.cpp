// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Contrast.h"

#include <QCoreApplication>
#include <QHash>
#include <QPixmap>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
           + 0.0722 * linear(color.blueF());
}

int distance(QRgb one, QRgb other)
{
    return std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other))
           + std::abs(qBlue(one) - qBlue(other));
}

QRgb commonestColor(const QImage &image)
{
    QHash<QRgb, int> counts;
    QRgb commonest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb color = image.pixel(x, y);
            if (++counts[color] > counts.value(commonest)) {
                commonest = color;
            }
        }
    }
    return commonest;
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QImage painted::picture(const QWidget &widget, const QRect &part)
{
    QWidget *window = widget.window();
    const QRect place(widget.mapTo(window, part.topLeft()), part.size());
    return window->grab(place).toImage().convertToFormat(QImage::Format_RGB32);
}

QImage painted::picture(const QWidget &widget)
{
    return picture(widget, widget.rect());
}

painted::Pair painted::strongestChange(const QImage &with, const QImage &without)
{
    QPoint found;
    int most = -1;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            const int here = distance(with.pixel(x, y), without.pixel(x, y));
            if (here > most) {
                most = here;
                found = QPoint(x, y);
            }
        }
    }
    return {with.pixelColor(found), without.pixelColor(found)};
}

painted::Pair painted::strongestPixel(const QImage &image)
{
    QImage ground(image.size(), image.format());
    ground.fill(commonestColor(image));
    return strongestChange(image, ground);
}

painted::Pair painted::textColors(QWidget &widget,
                                  const std::function<void(const QString &)> &setText)
{
    widget.setFixedSize(widget.size().expandedTo(QSize(80, 24))); // whatever the text
    setText(ink);
    const QImage with = picture(widget);
    setText(blank);
    return strongestChange(with, picture(widget));
}

painted::Pair painted::focusColors(QWidget &widget, const QRect &part)
{
    QWidget other(widget.window());
    other.resize(1, 1);
    other.show();
    other.setFocus(Qt::TabFocusReason);
    widget.window()->setAttribute(Qt::WA_KeyboardFocusChange); // as the Tab key
    const QImage without = picture(widget, part);
    widget.setFocus(Qt::TabFocusReason);
    widget.window()->setAttribute(Qt::WA_KeyboardFocusChange); // Qt 6.11 has reset it
    const QImage with = picture(widget, part);
    return {strongestChange(with, without).foreground, QColor(commonestColor(with))};
}

painted::Pair painted::focusColors(QWidget &widget)
{
    return focusColors(widget, widget.rect());
}

void painted::hover(QWidget &widget, const QPoint &position)
{
    // A button notices the pointer when it moves inside.
    QTest::mouseMove(&widget, position - QPoint(1, 1));
    QTest::mouseMove(&widget, position);
    QCoreApplication::processEvents();
}
