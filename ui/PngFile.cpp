// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PngFile.h"

#include <QImageReader>

QPixmap readPng(const QString &filePath)
{
    QImageReader reader(filePath, "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

QIcon iconOfFile(const QString &filePath)
{
    const QPixmap pixmap = readPng(filePath);
    return pixmap.isNull() ? QIcon(filePath) : QIcon(pixmap);
}
