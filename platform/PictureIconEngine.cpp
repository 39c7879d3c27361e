// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PictureIconEngine.h"

#include "platform/QtVersion.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace platform {

namespace {

int area(const QSize &size)
{
    return size.width() * size.height();
}

// Like QIcon's own engine, never larger than the picture.
QSize reduced(const QSize &picture, const QSize &space)
{
    const bool fits = picture.width() <= space.width() && picture.height() <= space.height();
    return fits ? picture : picture.scaled(space, Qt::KeepAspectRatio);
}

QPixmap inMode(const QPixmap &pixmap, QIcon::Mode mode)
{
    if (mode == QIcon::Normal) {
        return pixmap;
    }
    QStyleOption option;
    option.palette = QGuiApplication::palette();
    return QApplication::style()->generatedIconPixmap(mode, pixmap, &option);
}

} // namespace

void PictureIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State)
{
    const qreal scale = painter->device()->devicePixelRatio();
    QPixmap pixmap = draw((QSizeF(rect.size()) * scale).toSize(), mode, scale);
    pixmap.setDevicePixelRatio(scale);
    QRectF target({}, pixmap.deviceIndependentSize());
    target.moveCenter(QRectF(rect).center());
    painter->drawPixmap(target.topLeft(), pixmap);
}

QSize PictureIconEngine::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    const QPixmap *picture = bestPicture(size, 1);
    return picture ? reduced(picture->size(), size) : QSize();
}

QPixmap PictureIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State)
{
    return draw(size, mode, 1);
}

QPixmap PictureIconEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State,
                                        qreal scale)
{
    return draw(qtversion::scaledPixmapTakesPixels ? size : size * scale, mode, scale);
}

void PictureIconEngine::addPixmap(const QPixmap &pixmap, QIcon::Mode, QIcon::State)
{
    m_pictures.append(pixmap);
}

QList<QSize> PictureIconEngine::availableSizes(QIcon::Mode, QIcon::State)
{
    QList<QSize> sizes;
    for (const QPixmap &picture : std::as_const(m_pictures)) {
        if (!sizes.contains(picture.size())) {
            sizes.append(picture.size());
        }
    }
    return sizes;
}

QPixmap PictureIconEngine::draw(const QSize &pixels, QIcon::Mode mode, qreal scale) const
{
    const QPixmap *picture = bestPicture(pixels, scale);
    if (!picture) {
        return {};
    }
    const QSize actual = reduced(picture->size(), pixels);
    return inMode(actual == picture->size()
                      ? *picture
                      : picture->scaled(actual, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
                  mode);
}

// By the factor and then by the area: the nearest that is large enough, or else the nearest. Null
// if there is no picture.
const QPixmap *PictureIconEngine::bestPicture(const QSize &pixels, qreal scale) const
{
    const auto distance = [&](const QPixmap &picture) {
        const qreal factor = picture.devicePixelRatio() - scale;
        const int more = area(picture.size()) - area(pixels);
        return std::tuple(factor < 0, std::abs(factor), more < 0, std::abs(more));
    };
    const auto best = std::min_element(
        m_pictures.begin(), m_pictures.end(),
        [&](const QPixmap &one, const QPixmap &other) { return distance(one) < distance(other); });
    return best == m_pictures.end() ? nullptr : &*best;
}

void addPicture(QIcon &icon, const QPixmap &picture)
{
    if (icon.isNull() && !picture.isNull()) {
        // QIcon would replace an engine without a picture by its own.
        auto *engine = new PictureIconEngine;
        engine->addPixmap(picture, QIcon::Normal, QIcon::Off);
        icon = QIcon(engine);
    } else {
        icon.addPixmap(picture);
    }
}

} // namespace platform
