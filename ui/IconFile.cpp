// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/IconFile.h"

#include "launcher/IconCache.h"
#include "platform/ImageFile.h"
#include "platform/PictureIconEngine.h"
#include "platform/RegularFile.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>

#include <algorithm>

namespace {

void addHigherFactors(QIcon &icon, const QString &filePath)
{
    for (const int factor : {2, 3}) {
        QPixmap pixmap = readPng(iconFileOfFactor(filePath, factor));
        if (!pixmap.isNull()) {
            pixmap.setDevicePixelRatio(factor);
            icon.addPixmap(pixmap);
        }
    }
}

} // namespace

QPixmap readPng(const QString &filePath)
{
    QFile file(filePath);
    if (!platform::openRegularFile(file)) {
        return {};
    }
    QImageReader reader(&file, "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

QIcon iconOfFile(const QString &filePath)
{
    const QPixmap pixmap = readPng(filePath);
    if (pixmap.isNull()) {
        return platform::iconOfImageFile(filePath);
    }
    QIcon icon;
    platform::addPicture(icon, pixmap);
    if (qGuiApp->devicePixelRatio() > 1) {
        addHigherFactors(icon, filePath);
    }
    return icon;
}

QSize paintedSize(const QIcon &icon, const QSize &space)
{
    const QList<QSize> sizes = icon.availableSizes();
    if (sizes.isEmpty()) {
        return space;
    }
    const QSize size =
        *std::min_element(sizes.cbegin(), sizes.cend(), [](const QSize &one, const QSize &other) {
            return one.width() < other.width();
        });
    return size.width() <= space.width() && size.height() <= space.height()
               ? size
               : size.scaled(space, Qt::KeepAspectRatio);
}
