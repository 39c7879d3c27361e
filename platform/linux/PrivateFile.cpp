// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

// Many systems give each user a group of the same name and write permission for it by default.
bool isUsersOwnGroup(gid_t group)
{
    const passwd *user = ::getpwuid(::geteuid());
    const QByteArray name(user ? user->pw_name : "");
    const struct group *entry = ::getgrgid(group);
    return entry && !name.isEmpty() && name == entry->gr_name;
}

// Other users can replace a file in a folder that they own, or may write to while it is not sticky.
bool isProtectedFolder(const QString &folder)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(folder).constData(), &status) == -1
        || (status.st_uid != ::geteuid() && status.st_uid != 0)) {
        return false;
    }
    const bool isShared = (status.st_mode & S_IWOTH) != 0
                          || ((status.st_mode & S_IWGRP) != 0 && !isUsersOwnGroup(status.st_gid));
    return !isShared || (status.st_mode & S_ISVTX) != 0;
}

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
