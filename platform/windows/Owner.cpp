// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/Owner.h"

#include <QDir>

#include <aclapi.h>
#include <sddl.h>

#include <algorithm>
#include <iterator>

namespace platform {

namespace {

// S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464, the account that owns the files
// of Windows: the prefix for services, and the SHA-1 of "TRUSTEDINSTALLER" in five numbers.
bool isInstallerOfTheSystem(PSID account)
{
    SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
    PSID installer = nullptr;
    if (!AllocateAndInitializeSid(&authority, 6, SECURITY_SERVICE_ID_BASE_RID, 956008885,
                                  3418522649, 1831038044, 1853292631, 2271478464, 0, 0,
                                  &installer)) {
        return false;
    }
    const bool isSame = EqualSid(account, installer);
    FreeSid(installer);
    return isSame;
}

// A right of a packaged program counts only together with a right of its user.
bool isPackage(PSID account)
{
    const SID_IDENTIFIER_AUTHORITY packages = SECURITY_APP_PACKAGE_AUTHORITY;
    return std::equal(std::begin(packages.Value), std::end(packages.Value),
                      std::begin(GetSidIdentifierAuthority(account)->Value));
}

bool isTrusted(PSID account, const User &user)
{
    return EqualSid(account, user.sid()) || IsWellKnownSid(account, WinLocalSystemSid)
           || IsWellKnownSid(account, WinBuiltinAdministratorsSid)
           || IsWellKnownSid(account, WinCreatorOwnerRightsSid) || isInstallerOfTheSystem(account)
           || isPackage(account);
}

bool letsOthersReplace(ACE_HEADER &header, const User &user)
{
    constexpr DWORD replacing = FILE_DELETE_CHILD | DELETE | WRITE_DAC | WRITE_OWNER | GENERIC_ALL;
    // An entry that denies something only takes rights away.
    if ((header.AceFlags & INHERIT_ONLY_ACE)
        || (header.AceType != ACCESS_ALLOWED_ACE_TYPE
            && header.AceType != ACCESS_ALLOWED_CALLBACK_ACE_TYPE)) {
        return false;
    }
    // An entry with a condition begins in the same way.
    auto &entry = reinterpret_cast<ACCESS_ALLOWED_ACE &>(header);
    return (entry.Mask & replacing) && !isTrusted(&entry.SidStart, user);
}

} // namespace

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

bool letsOthersReplace(PSECURITY_DESCRIPTOR descriptor, const User &user)
{
    PSID owner = nullptr;
    PACL list = nullptr;
    BOOL isDefault = FALSE;
    BOOL hasList = FALSE;
    // Without a list everybody has all rights, and the owner may always change the list.
    if (!user.sid() || !GetSecurityDescriptorOwner(descriptor, &owner, &isDefault)
        || !GetSecurityDescriptorDacl(descriptor, &hasList, &list, &isDefault) || !owner || !hasList
        || !list || !isTrusted(owner, user)) {
        return true;
    }
    for (DWORD index = 0; index < list->AceCount; ++index) {
        void *entry = nullptr;
        if (!GetAce(list, index, &entry)
            || letsOthersReplace(*static_cast<ACE_HEADER *>(entry), user)) {
            return true;
        }
    }
    return false;
}

bool canOthersReplace(HANDLE fileOrFolder, const User &user)
{
    if (!hasOwners(fileOrFolder)) {
        return false;
    }
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(fileOrFolder, SE_FILE_OBJECT,
                        OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, nullptr, nullptr,
                        nullptr, nullptr, &descriptor)
        != ERROR_SUCCESS) {
        return true;
    }
    const LocalPointer<void> memory(descriptor);
    return letsOthersReplace(descriptor, user);
}

} // namespace platform
