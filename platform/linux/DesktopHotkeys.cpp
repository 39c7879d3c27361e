// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DesktopHotkeys.h"

#include "platform/linux/PortalHotkeys.h"
#include "platform/linux/WaylandSession.h"

namespace platform {

std::unique_ptr<DesktopHotkeys> createDesktopHotkeys(QWindow *window)
{
    return isWaylandSession() ? std::make_unique<PortalHotkeys>(window) : nullptr;
}

} // namespace platform
