// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessEnvironment.h"

namespace platform {

void chooseWindowSystem() {}

// Windows gives a started program no variables that were meant for it alone.
void dropPrivateVariables() {}

} // namespace platform
