// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/FileName.h"

#include <QFile>

#include <algorithm>

#include <sys/stat.h>

namespace platform {

QByteArray encodedName(const QString &name)
{
    const bool isAscii =
        std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x80; });
    return isAscii ? name.toLatin1() : QFile::encodeName(name);
}

QString decodedName(QByteArrayView name)
{
    const bool isAscii = std::all_of(name.begin(), name.end(),
                                     [](char c) { return static_cast<signed char>(c) >= 0; });
    return isAscii ? QString::fromLatin1(name) : QFile::decodeName(name.toByteArray());
}

bool isFolder(const QByteArray &name)
{
    struct stat status = {};
    return stat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace platform
