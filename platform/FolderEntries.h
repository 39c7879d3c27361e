// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

namespace platform {

/// A file or a subfolder of a folder.
struct FolderEntry
{
    QString name;
    bool isFolder = false;
};

/// The files and subfolders of a folder that are not hidden, in no order. A symbolic link counts as
/// its target; pipes, devices and symbolic links without a target are left out. Empty if the folder
/// cannot be read. Called for folders of hundreds of files at each start, so it does not look at
/// the files if the folder itself tells what they are.
QList<FolderEntry> folderEntries(const QString &path);

} // namespace platform
