// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>

/// The font of a row's title: of medium weight, or the given one if its family has no such style.
/// For another weight Qt loads a font again, even if both weights lead to the same file.
QFont titleFont(const QFont &font);
