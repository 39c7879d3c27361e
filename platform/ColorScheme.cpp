// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ColorScheme.h"

#include "platform/QtVersion.h"

namespace platform {

ColorScheme colorScheme()
{
    return qtversion::colorScheme();
}

void watchColorScheme(QObject *context, const std::function<void()> &changed)
{
    qtversion::watchColorScheme(context, changed);
}

} // namespace platform
