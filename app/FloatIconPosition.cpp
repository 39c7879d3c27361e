// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FloatIconPosition.h"

QPoint floatIconPosition(const QPoint &stored, const std::optional<QRect> &available)
{
    if (!available || (stored.x() >= 0 && stored.y() >= 0)) {
        return stored;
    }
    return available->bottomRight() - QPoint(60, 60);
}
