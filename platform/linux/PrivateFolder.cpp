// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <climits>
#include <optional>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int maximumSymbolicLinks = 40; // as many as Linux follows

// Many systems give each user a group of the same name and write permission for it by default.
bool isUsersOwnGroup(gid_t group)
{
    const passwd *user = ::getpwuid(::geteuid());
    const QByteArray name(user ? user->pw_name : "");
    const struct group *entry = ::getgrgid(group);
    if (!entry || name.isEmpty() || name != entry->gr_name) {
        return false;
    }
    const char *const *member = entry->gr_mem;
    while (*member && name == *member) {
        ++member;
    }
    return !*member;
}

bool isOwnOrRoots(uid_t owner)
{
    return owner == ::geteuid() || owner == 0;
}

// Other users can replace a file in a folder that they own, or may write to while it is not sticky.
bool isProtected(const QByteArray &folder)
{
    struct stat status = {};
    if (::stat(folder.constData(), &status) == -1 || !isOwnOrRoots(status.st_uid)) {
        return false;
    }
    const bool isShared = (status.st_mode & S_IWOTH) != 0
                          || ((status.st_mode & S_IWGRP) != 0 && !isUsersOwnGroup(status.st_gid));
    return !isShared || (status.st_mode & S_ISVTX) != 0;
}

// Nothing if the path is not a symbolic link. Empty if another user owns the link, who may replace
// it even in a sticky folder.
std::optional<QByteArray> targetOfSymbolicLink(const QByteArray &path)
{
    std::array<char, PATH_MAX> target{};
    const ssize_t size = ::readlink(path.constData(), target.data(), target.size());
    struct stat status = {};
    if (size <= 0 || ::lstat(path.constData(), &status) == -1) {
        return std::nullopt;
    }
    return isOwnOrRoots(status.st_uid) ? QByteArray(target.data(), size) : QByteArray();
}

// Visits the folders in which the system looks up a part of the path, and of the target of each
// symbolic link on the way.
bool isProtectedOnTheWay(QByteArrayList parts)
{
    QByteArray folder("/");
    int symbolicLinks = 0;
    while (isProtected(folder)) {
        if (parts.isEmpty()) {
            return true;
        }
        const QByteArray part = parts.takeFirst();
        if (part.isEmpty() || part == ".") {
            continue;
        }
        const QByteArray next = (folder == "/" ? QByteArray() : folder) + '/' + part;
        const std::optional<QByteArray> target = targetOfSymbolicLink(next);
        if (target && (target->isEmpty() || ++symbolicLinks > maximumSymbolicLinks)) {
            return false;
        }
        if (target) {
            folder = target->startsWith('/') ? QByteArray("/") : folder;
            parts = target->split('/') + parts;
        } else if (part == "..") {
            folder = folder.left(std::max(folder.lastIndexOf('/'), qsizetype(1)));
        } else {
            folder = next;
        }
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
    return QFileInfo(path).isDir()
           && isProtectedOnTheWay(QFile::encodeName(QFileInfo(path).absoluteFilePath()).split('/'));
}

QString temporaryFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation);
}

} // namespace platform
