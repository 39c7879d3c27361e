// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <type_traits>

#include <windows.h>

namespace platform {

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
    User();

    /// Null if the system does not tell.
    PSID sid() const;

private:
    QByteArray m_buffer;
};

/// Opens what has this name, be it a file, a folder or a link, to ask for its rights and with this
/// further access. Null if that is refused, or nothing has the name.
Handle openForRights(const QString &path, DWORD furtherAccess);

/// Whether it is the user's, or on a disk that has no owners.
bool isOwnOrNobodys(HANDLE fileOrFolder, const User &user);

/// A disk of the FAT family has no owners.
bool hasOwners(HANDLE fileOrFolder);

} // namespace platform
