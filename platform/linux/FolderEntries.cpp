// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderEntries.h"

#include "platform/linux/FileName.h"

#include <memory>
#include <optional>

#include <dirent.h>
#include <sys/stat.h>

namespace platform {

namespace {

struct CloseFolder
{
    void operator()(DIR *folder) const { closedir(folder); }
};

// Nothing if the entry is neither a file nor a folder.
std::optional<bool> isFolder(DIR *folder, const dirent &entry)
{
    if (entry.d_type == DT_REG || entry.d_type == DT_DIR) {
        return entry.d_type == DT_DIR;
    }
    // Some file systems do not tell the type, and that of a symbolic link is its target's.
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) {
        return std::nullopt;
    }
    struct stat status = {};
    if (fstatat(dirfd(folder), entry.d_name, &status, 0) != 0
        || (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))) {
        return std::nullopt;
    }
    return S_ISDIR(status.st_mode);
}

} // namespace

QList<FolderEntry> folderEntries(const QString &path)
{
    const std::unique_ptr<DIR, CloseFolder> folder(opendir(encodedName(path).constData()));
    if (!folder) {
        return {};
    }
    QList<FolderEntry> entries;
    while (const dirent *entry = readdir(folder.get())) {
        if (entry->d_name[0] == '.') {
            continue;
        }
        if (const std::optional<bool> isSubfolder = isFolder(folder.get(), *entry)) {
            entries.append({decodedName(entry->d_name), *isSubfolder});
        }
    }
    return entries;
}

} // namespace platform
