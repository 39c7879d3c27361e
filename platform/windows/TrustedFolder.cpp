// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/TrustedFolder.h"

#include "platform/windows/Owner.h"

namespace platform {

bool isTrustedFolder(const QString &path)
{
    const Handle folder = openWithReadControl(path, 0);
    return folder && isOwnOrUnowned(folder.get(), User());
}

} // namespace platform
