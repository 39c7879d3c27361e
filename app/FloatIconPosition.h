// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

/// Where the floating icon's top left corner goes at the start: to its stored place, on a screen or
/// not; or, when one of the stored coordinates is negative, to the lower right corner of what
/// windows may take up of the primary screen, if there is one.
QPoint floatIconPosition(const QPoint &stored, const std::optional<QRect> &available);
