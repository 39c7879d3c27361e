// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PaintedSize.h"

#include <QList>

#include <algorithm>

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
