// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RegularFile.h"

#include "platform/windows/Owner.h"

#include <QDir>
#include <QFile>

namespace platform {

namespace {

// Names of devices, such as "CON", are valid in every folder.
bool isOnDisk(const QString &path)
{
    const HANDLE opened =
        CreateFileW(qUtf16Printable(QDir::toNativeSeparators(path)), FILE_READ_ATTRIBUTES,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_ATTRIBUTE_NORMAL, nullptr);
    const Handle file(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
    return file && GetFileType(file.get()) == FILE_TYPE_DISK;
}

} // namespace

bool openRegularFile(QFile &file)
{
    const QString path = file.fileName();
    return (path.startsWith(u':') || isOnDisk(path)) && file.open(QIODevice::ReadOnly);
}

} // namespace platform
