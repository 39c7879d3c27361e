// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/IconFolder.h"

#include "platform/PrivateFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QHashFunctions>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

QString makeIconFolder()
{
    const QString parent = QDir::tempPath() + "/Vaskel"_L1;
    QString folder = parent + "/icons"_L1;
    // Whoever owns the parent could put another folder in the place of this one.
    if (!platform::makePrivateFolder(parent) || !platform::makePrivateFolder(folder)) {
        return {};
    }
    return folder;
}

QString iconKey(const QString &path)
{
    return QString::number(qHash(QStringView(path), 0), 16);
}

bool saveIcon(const QPixmap &pixmap, const QString &filePath)
{
    // QSaveFile would wait for the disk, once for each program at the first start.
    QTemporaryFile file(QFileInfo(filePath).path() + "/XXXXXX.tmp"_L1);
    if (!file.open() || !pixmap.save(&file, "PNG", -1) || !file.rename(filePath)) {
        return false;
    }
    file.setAutoRemove(false);
    return true;
}
