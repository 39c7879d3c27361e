// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/WaylandSession.h"

#include <QByteArray>

namespace platform {

// A compositor sets the first variable for its clients. The second one is for a program that was
// started without it, as a service of the user may be.
bool isWaylandSession()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
           || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

} // namespace platform
