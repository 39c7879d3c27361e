// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowActivation.h"

namespace platform {

void prepareActivation(QWidget *) {}

} // namespace platform
