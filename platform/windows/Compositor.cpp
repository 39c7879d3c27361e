// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Compositor.h"

namespace platform {

bool isCompositing()
{
    return true; // since Windows 8, always
}

} // namespace platform
