// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AutoStart.h"

namespace platform {
void applyAutoStart(bool) {}
} // namespace platform
