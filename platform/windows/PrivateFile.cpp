// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include <QFile>
#include <QFileInfo>

namespace platform {

bool openPrivateFile(QFile &file, QIODevice::OpenMode mode)
{
    const QFileInfo info(file.fileName());
    if (info.isSymLink() || info.isJunction() || (info.exists() && !info.isFile())) {
        return false;
    }
    // The temporary folder is the user's own here, so that whatever it holds is too.
    QFile::remove(file.fileName());
    return file.open(mode | QIODevice::NewOnly);
}

} // namespace platform
