// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RegularFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

bool isRegular(const struct stat &status)
{
    return S_ISREG(status.st_mode);
}

// Returns -1 on failure. Checks twice: opening some devices has effects, and the file may be
// replaced after the first check.
int openRegular(const QByteArray &name)
{
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0 || !isRegular(status)) {
        return -1;
    }
    const int file = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file != -1 && (::fstat(file, &status) != 0 || !isRegular(status))) {
        ::close(file);
        return -1;
    }
    return file;
}

} // namespace

bool openRegularFile(QFile &file)
{
    if (file.fileName().startsWith(u':')) {
        return file.open(QIODevice::ReadOnly);
    }
    const int descriptor = openRegular(QFile::encodeName(file.fileName()));
    return descriptor != -1
           && file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
}

} // namespace platform
