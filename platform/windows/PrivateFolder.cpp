// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "platform/windows/Owner.h"

#include <QDir>

namespace platform {

namespace {

bool isRealFolder(HANDLE folder)
{
    BY_HANDLE_FILE_INFORMATION info{};
    return GetFileInformationByHandle(folder, &info)
           && (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
           && !(info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

bool restrictToUser(HANDLE folder, const User &user)
{
    const LocalPointer<void> descriptor = descriptorForUserAlone(user);
    return descriptor
           && SetKernelObjectSecurity(
               folder, DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
               descriptor.get());
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
    return !hasOwners(folder.get()) || restrictToUser(folder.get(), user);
}

bool isProtectedFolder(const QString &)
{
    return true;
}

} // namespace platform
