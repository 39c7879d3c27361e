// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ClosedPipe.h"

#include <csignal>

namespace platform {

// What is ignored would stay so in a started program, but QProcess and GLib both put it back.
void outliveClosedPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace platform
