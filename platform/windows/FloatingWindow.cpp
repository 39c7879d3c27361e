// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FloatingWindow.h"

namespace platform {

void keepFloating(QWindow *, Floating) {}

bool canPlaceWindows()
{
    return true;
}

} // namespace platform
