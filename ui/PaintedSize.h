// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QSize>

/// Returns the size at which to paint the icon in this space: that of its smallest picture, reduced
/// if it is larger. QIcon would fill the space with a picture for a higher device pixel ratio.
QSize paintedSize(const QIcon &icon, const QSize &space);
