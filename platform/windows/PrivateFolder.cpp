// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>

#include <memory>
#include <type_traits>

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

namespace platform {

namespace {

struct CloseHandleCall
{
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseHandleCall>;

struct LocalFreeCall
{
    void operator()(void *memory) const { LocalFree(memory); }
};
template <typename T> using LocalPointer = std::unique_ptr<T, LocalFreeCall>;

/// The identity of this process's user.
class User
{
public:
    User()
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

    PSID sid() const
    {
        const auto *user = reinterpret_cast<const TOKEN_USER *>(m_buffer.constData());
        return m_buffer.isEmpty() ? nullptr : user->User.Sid;
    }

private:
    QByteArray m_buffer;
};

Handle openFolder(const QString &path)
{
    const HANDLE folder =
        CreateFileW(qUtf16Printable(QDir::toNativeSeparators(path)),
                    READ_CONTROL | WRITE_DAC | FILE_READ_ATTRIBUTES,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    return Handle(folder == INVALID_HANDLE_VALUE ? nullptr : folder);
}

bool isRealFolder(HANDLE folder)
{
    BY_HANDLE_FILE_INFORMATION info{};
    return GetFileInformationByHandle(folder, &info)
           && (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
           && !(info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

// A disk of the FAT family has no owners, and nothing to close.
bool hasOwners(HANDLE folder)
{
    DWORD flags = 0;
    return !GetVolumeInformationByHandleW(folder, nullptr, 0, nullptr, nullptr, &flags, nullptr, 0)
           || (flags & FILE_PERSISTENT_ACLS);
}

// What a process with full rights makes belongs to the administrators, not to its user.
bool isOwn(HANDLE folder, PSID user)
{
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(folder, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr,
                        nullptr, nullptr, &descriptor)
        != ERROR_SUCCESS) {
        return false;
    }
    const LocalPointer<void> memory(descriptor);
    return EqualSid(owner, user) || IsWellKnownSid(owner, WinBuiltinAdministratorsSid);
}

// Leaves full access for the user and the system, and takes nothing over from the folder above.
bool close(HANDLE folder, PSID user)
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
    // Asked and closed through one handle, so that nothing can be put in its place in between.
    const Handle folder = openFolder(path);
    if (!folder || !user.sid() || !isRealFolder(folder.get())) {
        return false;
    }
    return !hasOwners(folder.get())
           || (isOwn(folder.get(), user.sid()) && close(folder.get(), user.sid()));
}

} // namespace platform
