// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/File.h"

#include <QDesktopServices>
#include <QUrl>

namespace platform {

bool openFile(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace platform
