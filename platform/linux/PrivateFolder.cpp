// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
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
bool isProtected(const QString &folder)
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

bool isProtectedUpToTheRoot(QString folder)
{
    while (isProtected(folder)) {
        const QString parent = QFileInfo(folder).path();
        if (parent == folder) {
            return true;
        }
        folder = parent;
    }
    return false;
}

} // namespace

bool makePrivateFolder(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    const QByteArray name = QFile::encodeName(path);
    ::mkdir(name.constData(), S_IRWXU);

    // Check and change through one descriptor, so that nobody can swap the folder in between.
    const int folder = ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder == -1) {
        return false;
    }
    struct stat status = {};
    const bool isOwn = ::fstat(folder, &status) == 0 && status.st_uid == ::geteuid()
                       && ::fchmod(folder, S_IRWXU) == 0;
    ::close(folder);
    return isOwn;
}

bool isProtectedFolder(const QString &path)
{
    // Symbolic links on the way can be replaced as well as the folders to which they lead.
    const QString given = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    const QString canonical = QFileInfo(given).canonicalFilePath();
    return !canonical.isEmpty() && isProtectedUpToTheRoot(given)
           && (canonical == given || isProtectedUpToTheRoot(canonical));
}

} // namespace platform
