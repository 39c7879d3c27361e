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
        // A missing folder may have an empty name, which would mean the working folder.
        if (!root.isEmpty() && !roots.contains(root)) {
            roots.append(root);
        }
    }
    return roots;
}

// Every link is listed, whatever its target; the file is not even read.
QHash<QString, QString> startMenuNames(const QString &, const QStringList &filePaths)
{
    QHash<QString, QString> names;
    for (const QString &filePath : filePaths) {
        names.insert(filePath, QFileInfo(filePath).completeBaseName());
    }
    return names;
}

} // namespace platform
