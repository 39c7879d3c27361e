// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/ThemeIconEngine.h"

#include "platform/ImageFile.h"
#include "platform/QtVersion.h"

#include <QIcon>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

bool isFor(const IconSizes &sizes, int size, int scale)
{
    if (sizes.scale != scale) {
        return false;
    }
    switch (sizes.kind) {
    case IconSizes::Fixed:
        return size == sizes.size;
    case IconSizes::Scalable:
        return size >= sizes.minimum && size <= sizes.maximum;
    case IconSizes::Threshold:
        break;
    }
    return std::abs(size - sizes.size) <= sizes.threshold;
}

// In pixels. The distance of a threshold is to its minimum and maximum, as Qt has it.
int distance(const IconSizes &sizes, int pixels)
{
    const bool isThreshold = sizes.kind == IconSizes::Threshold;
    if (sizes.kind == IconSizes::Fixed) {
        return std::abs(sizes.size * sizes.scale - pixels);
    }
    const int least = isThreshold ? sizes.size - sizes.threshold : sizes.minimum;
    const int most = isThreshold ? sizes.size + sizes.threshold : sizes.maximum;
    if (pixels < least * sizes.scale) {
        return sizes.minimum * sizes.scale - pixels;
    }
    return pixels > most * sizes.scale ? pixels - sizes.maximum * sizes.scale : 0;
}

const IconPicture *bestPicture(const QList<IconPicture> &pictures, int size, int scale)
{
    // Pictures for ranges of sizes overlap. The one that was drawn for this size has the sharpest
    // lines.
    const IconPicture *exact = nullptr;
    for (const IconPicture &picture : pictures) {
        if (isFor(picture.sizes, size, scale)
            && (!exact
                || std::abs(picture.sizes.size - size) < std::abs(exact->sizes.size - size))) {
            exact = &picture;
        }
    }
    if (exact) {
        return exact;
    }
    const auto nearest = std::min_element(
        pictures.begin(), pictures.end(), [&](const IconPicture &one, const IconPicture &other) {
            return distance(one.sizes, size * scale) < distance(other.sizes, size * scale);
        });
    return nearest != pictures.end() ? &*nearest : nullptr;
}

} // namespace

ThemeIconEngine::ThemeIconEngine(QList<IconPicture> pictures)
    : m_pictures(std::move(pictures))
{
}

void ThemeIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State)
{
    const int scale = qCeil(painter->device()->devicePixelRatio());
    const QPixmap pixmap = draw(rect.size() * scale, rect.size(), scale);
    QRect target(QPoint(), pixmap.size() / scale);
    target.moveCenter(rect.center());
    painter->drawPixmap(target, pixmap);
}

QPixmap ThemeIconEngine::pixmap(const QSize &size, QIcon::Mode, QIcon::State)
{
    return draw(size, size, 1);
}

QPixmap ThemeIconEngine::scaledPixmap(const QSize &size, QIcon::Mode, QIcon::State, qreal scale)
{
    const int wholeScale = qCeil(scale);
    return qtversion::scaledPixmapTakesPixels ? draw(size, size / wholeScale, wholeScale)
                                              : draw(size * scale, size, wholeScale);
}

QSize ThemeIconEngine::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    return draw(size, size, 1).size();
}

QIconEngine *ThemeIconEngine::clone() const
{
    return new ThemeIconEngine(m_pictures);
}

// Without a plug-in for vector pictures, or with a damaged file, the next best is drawn.
QPixmap ThemeIconEngine::draw(const QSize &pixels, const QSize &size, int scale)
{
    if (pixels == m_lastSize) {
        return m_last;
    }
    QList<IconPicture> pictures = m_pictures;
    QPixmap pixmap;
    const int least = std::min(size.width(), size.height());
    while (const IconPicture *picture = bestPicture(pictures, least, scale)) {
        pixmap = readImage(picture->file, pixels);
        if (!pixmap.isNull()) {
            break;
        }
        pictures.removeAt(picture - pictures.constData());
    }
    m_last = pixmap;
    m_lastSize = pixels;
    return pixmap;
}

} // namespace platform
