// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/IconTheme.h"

namespace platform {

// Windows has no icon themes.
void ensureIconTheme() {}

QIcon fileTypeIcon(const QFileInfo &)
{
    return {};
}

} // namespace platform
