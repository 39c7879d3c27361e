// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

namespace platform {
QString linkSuffix()
{
    return QStringLiteral("desktop");
}
bool openLink(const QString &)
{
    return false;
}
} // namespace platform
