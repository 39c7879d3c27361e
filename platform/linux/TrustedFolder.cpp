// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/TrustedFolder.h"

#include "platform/PrivateFolder.h"

namespace platform {

bool isTrustedFolder(const QString &path)
{
    return isProtectedFolder(path);
}

} // namespace platform
