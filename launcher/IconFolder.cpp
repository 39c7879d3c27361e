// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/IconFolder.h"

#include "platform/FileIcon.h"
#include "platform/PrivateFolder.h"

#include <QDir>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHashFunctions>
#include <QIcon>
#include <QStandardPaths>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {

QString folderInCache()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + "/icons"_L1;
    return platform::makePrivateFolder(folder) ? folder : QString();
}

} // namespace

QString makeIconFolder()
{
    const QString parent = QDir::tempPath() + "/Vaskel"_L1;
    QString folder = parent + "/icons"_L1;
    // Whoever owns the parent could put another folder in the place of this one.
    for (const QString &path : {parent, folder}) {
        if (!platform::makePrivateFolder(path)) {
            // Of the users of one temporary folder the first has it. What is no folder at all is
            // in everybody's way, and no reason to go elsewhere.
            return QFileInfo(path).isDir() ? folderInCache() : QString();
        }
    }
    return folder;
}

QString iconKey(const QString &path)
{
    return QString::number(qHash(QStringView(path), 0), 16);
}

QPixmap filePixmap(const QFileInfo &file, const QFileIconProvider &provider)
{
    QIcon icon = platform::linkIcon(file.filePath());
    if (icon.isNull()) {
        icon = provider.icon(file);
    }
    return icon.pixmap(QSize(iconSize, iconSize), QIcon::Normal, QIcon::Off);
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

bool saveScaledIcon(const QPixmap &pixmap, const QString &filePath)
{
    if (pixmap.isNull()) {
        return false;
    }
    const QSize size(iconSize, iconSize);
    return saveIcon(pixmap.size() == size
                        ? pixmap
                        : pixmap.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation),
                    filePath);
}
