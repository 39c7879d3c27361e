// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>

#include <windows.h>

namespace platform {

/// The picture of an icon, in the size of its colour bitmap, with the alpha values that Windows
/// draws. Null for an icon without a colour bitmap. The icon stays the caller's.
QPixmap iconToPixmap(HICON icon);

} // namespace platform
