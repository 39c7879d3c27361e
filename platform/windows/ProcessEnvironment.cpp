// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessEnvironment.h"

namespace platform {

void chooseWindowSystem() {}

// Windows sets no variables for a single process.
void unsetPrivateVariables() {}

} // namespace platform
