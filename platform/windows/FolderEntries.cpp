// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderEntries.h"

#include <QDirIterator>
#include <QFileInfo>

namespace platform {

QList<FolderEntry> folderEntries(const QString &path)
{
    QList<FolderEntry> entries;
    QDirIterator found(path, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
    while (found.hasNext()) {
        found.next();
        entries.append({found.fileName(), found.fileInfo().isDir()});
    }
    return entries;
}

} // namespace platform
