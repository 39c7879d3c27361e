// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Folder.h"

#include "platform/windows/ShellOpen.h"

namespace platform {

bool openFolder(const QString &path)
{
    // Without a separator at its end, "Photos" would start a "Photos.exe" beside the folder.
    return shellOpen(path.endsWith(u'/') ? path : path + u'/');
}

} // namespace platform
