// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include "platform/windows/Owner.h"

#include <QDir>
#include <QFile>

namespace platform {

namespace {

bool isFreeOrOwn(const QString &path)
{
    const Handle file = openWithReadControl(path, 0);
    if (!file) {
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    }
    constexpr DWORD noFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    BY_HANDLE_FILE_INFORMATION info{};
    return GetFileInformationByHandle(file.get(), &info) && !(info.dwFileAttributes & noFile)
           && isOwnOrUnowned(file.get(), User());
}

// In a folder that users share, the file would otherwise inherit rights for all of them. Fails if
// someone has taken the name.
Handle createForUserAlone(const QString &path)
{
    const LocalPointer<void> descriptor = descriptorForUserAlone(User());
    if (!descriptor) {
        return nullptr;
    }
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), descriptor.get(), FALSE};
    const HANDLE created = CreateFileW(qUtf16Printable(QDir::toNativeSeparators(path)),
                                       GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       &attributes, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    return Handle(created == INVALID_HANDLE_VALUE ? nullptr : created);
}

} // namespace

bool openPrivateFile(QFile &file, QIODevice::OpenMode mode)
{
    if (!isFreeOrOwn(file.fileName())) {
        return false;
    }
    // Do not write to the earlier file: it may have further hard links.
    QFile::remove(file.fileName());
    // While the handle is open, nobody can delete the file or take its name.
    const Handle created = createForUserAlone(file.fileName());
    return created && file.open(mode);
}

} // namespace platform
