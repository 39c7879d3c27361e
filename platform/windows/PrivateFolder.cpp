// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "platform/windows/Owner.h"

#include <QDir>

#include <sddl.h>

namespace platform {

namespace {

bool isRealFolder(HANDLE folder)
{
    BY_HANDLE_FILE_INFORMATION info{};
    return GetFileInformationByHandle(folder, &info)
           && (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
           && !(info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

// Grants full access to the user and the system, and stops inheriting from the parent folder.
bool restrictToUser(HANDLE folder, PSID user)
{
    LPWSTR name = nullptr;
    if (!ConvertSidToStringSidW(user, &name)) {
        return false;
    }
    const LocalPointer<wchar_t> nameMemory(name);
    const QString rights =
        QStringLiteral("D:P(A;OICI;FA;;;%1)(A;OICI;FA;;;SY)").arg(QString::fromWCharArray(name));
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(
            qUtf16Printable(rights), SDDL_REVISION_1, &descriptor, nullptr)) {
        return false;
    }
    const LocalPointer<void> descriptorMemory(descriptor);
    return SetKernelObjectSecurity(
        folder, DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, descriptor);
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
    return !hasOwners(folder.get()) || restrictToUser(folder.get(), user.sid());
}

bool isProtectedFolder(const QString &)
{
    return true;
}

} // namespace platform
