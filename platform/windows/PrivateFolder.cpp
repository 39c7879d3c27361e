// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "platform/windows/Owner.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

namespace platform {

namespace {

bool isRealFolder(HANDLE folder)
{
    BY_HANDLE_FILE_INFORMATION info{};
    return GetFileInformationByHandle(folder, &info)
           && (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
           && !(info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

bool restrictToUser(HANDLE fileOrFolder, const User &user)
{
    const LocalPointer<void> descriptor = descriptorForUserAlone(user);
    return descriptor
           && SetKernelObjectSecurity(
               fileOrFolder, DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
               descriptor.get());
}

// The rights that a file has inherited stay when its folder changes, and by default everybody may
// pass a folder that he cannot list.
void restrictFiles(const QString &folder, const User &user)
{
    const QDir dir(folder);
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        const Handle file = openWithReadControl(dir.filePath(name), WRITE_DAC);
        if (file && isOwnOrUnowned(file.get(), user)) {
            restrictToUser(file.get(), user);
        }
    }
}

// Examines a symbolic link or a junction itself, not its target.
bool isProtectedUpToTheRoot(const QString &path, const User &user)
{
    for (QString folder = path;; folder = QFileInfo(folder).path()) {
        const Handle handle = openWithReadControl(folder, 0);
        if (!handle || canOthersReplace(handle.get(), user)) {
            return false;
        }
        if (QDir(folder).isRoot()) {
            return true;
        }
    }
}

} // namespace

bool makePrivateFolder(const QString &path)
{
    QDir().mkpath(path);
    const User user;
    // Check and change through one handle, so that nobody can swap the folder in between.
    const Handle folder = openWithReadControl(path, WRITE_DAC);
    if (!folder || !user.sid() || !isRealFolder(folder.get())
        || !isOwnOrUnowned(folder.get(), user)) {
        return false;
    }
    if (!hasOwners(folder.get())) {
        return true;
    }
    restrictFiles(path, user);
    return restrictToUser(folder.get(), user);
}

bool isProtectedFolder(const QString &path)
{
    const User user;
    return isProtectedUpToTheRoot(QDir(path).absolutePath(), user)
           && isProtectedUpToTheRoot(QDir(path).canonicalPath(), user);
}

QString temporaryFolder()
{
    QString usual = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    const QString own = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    if (isProtectedFolder(usual)) {
        return usual;
    }
    return makePrivateFolder(own) ? own : QString();
}

} // namespace platform
