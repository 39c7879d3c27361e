// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include "platform/PrivateFolder.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

bool isFreeOrOwn(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) == -1) {
        return errno == ENOENT;
    }
    return S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

} // namespace

bool openPrivateFile(QFile &file, QIODevice::OpenMode mode)
{
    const QString path = file.fileName();
    if (!isProtectedFolder(QFileInfo(path).path()) || !isFreeOrOwn(path)) {
        return false;
    }
    // Do not write to the earlier file: it may have further hard links. NewOnly fails if someone
    // takes the name in between, even with a symbolic link.
    QFile::remove(path);
    return file.open(mode | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace platform
