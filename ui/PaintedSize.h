// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QSize>

/// The size in which to paint the icon in this space: that of its picture for a factor of 1,
/// reduced if it is larger. QIcon would enlarge the pictures of higher factors to fill the space.
QSize paintedSize(const QIcon &icon, const QSize &space);
