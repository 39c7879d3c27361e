// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PngFile.h"

#include "platform/RegularFile.h"

#include <QFile>
#include <QImageReader>

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
    if (!pixmap.isNull()) {
        return pixmap;
    }
    QFile file(filePath);
    return platform::openRegularFile(file) ? QIcon(filePath) : QIcon();
}
