// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

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

} // namespace platform
