// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

/// The start position of the floating icon's top left corner. Returns the stored position even if
/// no screen shows it. If a stored coordinate is negative, returns a position in the lower right
/// corner of the primary screen's available geometry, if there is a screen.
QPoint floatIconPosition(const QPoint &stored, const std::optional<QRect> &available);
