// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ClosedPipe.h"

namespace platform {

// Windows has no SIGPIPE: such a write fails anyway.
void ignoreClosedPipes() {}

} // namespace platform
