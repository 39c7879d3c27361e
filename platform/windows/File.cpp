// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/File.h"

#include "platform/Folder.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace platform {

bool openFile(const QString &path)
{
    const QFileInfo file(path);
    if (file.isDir()) {
        return openFolder(QDir::fromNativeSeparators(path));
    }
    // Without a dot in its name, "README" would start a "README.exe" beside the file. Windows
    // ignores a dot at the end.
    const bool hasDot = file.fileName().contains(u'.');
    return QDesktopServices::openUrl(QUrl::fromLocalFile(hasDot ? path : path + u'.'));
}

} // namespace platform
