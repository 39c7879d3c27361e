// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DesktopHotkeys.h"

namespace platform {

std::unique_ptr<DesktopHotkeys> createDesktopHotkeys(QWindow *)
{
    return nullptr;
}

} // namespace platform
