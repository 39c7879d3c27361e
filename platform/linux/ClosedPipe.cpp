// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ClosedPipe.h"

#include <csignal>

namespace platform {

// Children would inherit SIG_IGN, but both QProcess and GLib reset it.
void ignoreClosedPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace platform
