// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Folder.h"

#include "platform/windows/ShellOpen.h"

namespace platform {

bool openFolder(const QString &path)
{
    return shellOpen(path);
}

} // namespace platform
