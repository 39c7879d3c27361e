// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include "platform/windows/ShellOpen.h"

namespace platform {

QString linkSuffix()
{
    return QStringLiteral("lnk");
}

bool openLink(const QString &filePath)
{
    return shellOpen(filePath);
}

} // namespace platform
