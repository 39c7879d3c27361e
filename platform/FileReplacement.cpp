// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileReplacement.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>

namespace platform {

bool replaceFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    // On a full disk, write() may only report fewer bytes, and commit() ignores a failed flush: it
    // would replace the file by a shorter one.
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush()
           && file.commit();
}

} // namespace platform
