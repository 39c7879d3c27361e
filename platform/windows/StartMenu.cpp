// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include <QDir>
#include <QFileInfo>

#include <windows.h>

#include <shlobj.h>

namespace platform {

QStringList startMenuRoots()
{
    QStringList roots;
    for (const int folder : {CSIDL_PROGRAMS, CSIDL_COMMON_PROGRAMS}) {
        wchar_t path[MAX_PATH];
        if (SHGetFolderPathW(nullptr, folder, nullptr, 0, path) < 0) {
            continue;
        }
        const QString root = QDir::fromNativeSeparators(QString::fromWCharArray(path));
        // A folder that is missing may have no name. An empty one would be the working folder's.
        if (!root.isEmpty() && !roots.contains(root)) {
            roots.append(root);
        }
    }
    return roots;
}

// A link is listed whatever it names; it is not even read.
QHash<QString, QString> startMenuNames(const QString &, const QStringList &filePaths)
{
    QHash<QString, QString> names;
    for (const QString &filePath : filePaths) {
        names.insert(filePath, QFileInfo(filePath).completeBaseName());
    }
    return names;
}

} // namespace platform
