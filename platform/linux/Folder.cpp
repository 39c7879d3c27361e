// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Folder.h"

#include <QDesktopServices>
#include <QUrl>

namespace platform {

bool openFolder(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace platform
