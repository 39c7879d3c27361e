// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/VaskelIcon.h"

#include "ui/PngFile.h"

#include <QPixmapCache>
#include <QString>

using namespace Qt::StringLiterals;

namespace {

// Cached, since the windows and the command box each create the icon.
QPixmap pixmapOfSize(int size)
{
    const QString path = u":/assets/icons/%1.png"_s.arg(size);
    QPixmap pixmap;
    if (!QPixmapCache::find(path, &pixmap)) {
        pixmap = readPng(path);
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
