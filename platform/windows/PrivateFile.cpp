// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include "platform/windows/Owner.h"

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

} // namespace

bool openPrivateFile(QFile &file, QIODevice::OpenMode mode)
{
    if (!isFreeOrOwn(file.fileName())) {
        return false;
    }
    // Do not write to the earlier file: it may have further hard links. NewOnly fails if someone
    // takes the name in between.
    QFile::remove(file.fileName());
    return file.open(mode | QIODevice::NewOnly);
}

} // namespace platform
