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

/// The user who runs this process.
class User
{
public:
    User();

    /// Null if the system does not tell. Owned by this object.
    PSID sid() const;

private:
    QByteArray m_buffer;
};

/// A security descriptor that grants full access to the user and the system, to nobody else, and
/// inherits nothing from the parent folder. Null if the system does not tell the user.
LocalPointer<void> descriptorForUserAlone(const User &user);

/// Opens a file, a folder or a symbolic link itself, with READ_CONTROL and the given access. Null
/// if it does not exist or the access is denied.
Handle openWithReadControl(const QString &path, DWORD furtherAccess);

/// Whether the user or the administrators own it, or its volume has no owners.
bool isOwnOrUnowned(HANDLE fileOrFolder, const User &user);

/// Whether a security descriptor, with its owner and access list, lets someone other than the user,
/// the system and the administrators delete or rename the file or folder, do so with what is in the
/// folder, or change who may.
bool letsOthersReplace(PSECURITY_DESCRIPTOR descriptor, const User &user);

/// The same for an open file or folder. True if the system does not tell; false on a volume without
/// owners.
bool canOthersReplace(HANDLE fileOrFolder, const User &user);

/// Whether the volume stores owners; FAT does not. True if the system does not tell.
bool hasOwners(HANDLE fileOrFolder);

} // namespace platform
