// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFrame.h"

namespace platform {

void ignoreMovesOfHiddenWindows() {}

} // namespace platform
