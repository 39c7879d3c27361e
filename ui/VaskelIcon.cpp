// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/VaskelIcon.h"

#include "platform/ImageFile.h"

#include <QImage>
#include <QPixmapCache>
#include <QResource>
#include <QString>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace {

// The pixels that are stored beside the PNG file as Format_ARGB32_Premultiplied, used without a
// copy. Null if they are missing or not aligned, or if the machine is not little-endian.
QPixmap pixmapInPlace(int size)
{
    const QResource pixels(u":/assets/icons/%1.argb"_s.arg(size));
    const auto address = reinterpret_cast<quintptr>(pixels.data());
    if (QSysInfo::ByteOrder != QSysInfo::LittleEndian || address % alignof(QRgb) != 0
        || pixels.size() != qint64(size) * size * qint64(sizeof(QRgb))) {
        return {};
    }
    const QImage image(pixels.data(), size, size, QImage::Format_ARGB32_Premultiplied);
    return QPixmap::fromImage(image, Qt::NoFormatConversion);
}

// Cached, since the windows and the command box each create the icon.
QPixmap pixmapOfSize(int size)
{
    const QString path = u":/assets/icons/%1.png"_s.arg(size);
    QPixmap pixmap;
    if (!QPixmapCache::find(path, &pixmap)) {
        pixmap = pixmapInPlace(size);
        if (pixmap.isNull()) {
            pixmap = platform::readPng(path);
        }
        QPixmapCache::insert(path, pixmap);
    }
    return pixmap;
}

} // namespace

QIcon vaskelIcon()
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        icon.addPixmap(pixmapOfSize(size));
    }
    return icon;
}
