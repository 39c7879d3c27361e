// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Owner.h"

#include <QDir>

#include <aclapi.h>
#include <sddl.h>

namespace platform {

User::User()
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return;
    }
    const Handle owner(token);
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    m_buffer.resize(int(size));
    if (!GetTokenInformation(token, TokenUser, m_buffer.data(), size, &size)) {
        m_buffer.clear();
    }
}

PSID User::sid() const
{
    const auto *user = reinterpret_cast<const TOKEN_USER *>(m_buffer.constData());
    return m_buffer.isEmpty() ? nullptr : user->User.Sid;
}

LocalPointer<void> descriptorForUserAlone(const User &user)
{
    LPWSTR name = nullptr;
    if (!user.sid() || !ConvertSidToStringSidW(user.sid(), &name)) {
        return nullptr;
    }
    const LocalPointer<wchar_t> nameMemory(name);
    const QString rights =
        QStringLiteral("D:P(A;OICI;FA;;;%1)(A;OICI;FA;;;SY)").arg(QString::fromWCharArray(name));
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(qUtf16Printable(rights), SDDL_REVISION_1,
                                                         &descriptor, nullptr);
    return LocalPointer<void>(descriptor);
}

Handle openWithReadControl(const QString &path, DWORD furtherAccess)
{
    const HANDLE opened =
        CreateFileW(qUtf16Printable(QDir::toNativeSeparators(path)),
                    READ_CONTROL | FILE_READ_ATTRIBUTES | furtherAccess,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    return Handle(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
}

bool hasOwners(HANDLE fileOrFolder)
{
    DWORD flags = 0;
    return !GetVolumeInformationByHandleW(fileOrFolder, nullptr, 0, nullptr, nullptr, &flags,
                                          nullptr, 0)
           || (flags & FILE_PERSISTENT_ACLS);
}

bool isOwnOrUnowned(HANDLE fileOrFolder, const User &user)
{
    if (!hasOwners(fileOrFolder)) {
        return true;
    }
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (!user.sid()
        || GetSecurityInfo(fileOrFolder, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                           nullptr, nullptr, nullptr, &descriptor)
               != ERROR_SUCCESS) {
        return false;
    }
    const LocalPointer<void> memory(descriptor);
    // Files of an elevated process belong to the administrators, not to its user.
    return EqualSid(owner, user.sid()) || IsWellKnownSid(owner, WinBuiltinAdministratorsSid);
}

} // namespace platform
