// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/IconCache.h"

#include "platform/PrivateFolder.h"
#include "platform/ShellIcon.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHashFunctions>
#include <QIcon>
#include <QStandardPaths>
#include <QStringBuilder>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize iconSize(32, 32);

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
    // The owner of the parent could replace the folder, so check both. Anybody may have taken the
    // name in a shared folder.
    for (const QString &path : {parent, folder}) {
        if (!platform::makePrivateFolder(path)) {
            return folderInCache();
        }
    }
    return platform::isProtectedFolder(folder) ? folder : folderInCache();
}

bool saveIcon(const QPixmap &pixmap, const QString &filePath)
{
    if (pixmap.isNull()) {
        return false;
    }
    // Not QSaveFile: it would wait for the disk, once per program at the first start.
    QTemporaryFile file(QFileInfo(filePath).path() + "/XXXXXX.tmp"_L1);
    if (!file.open() || !pixmap.save(&file, "PNG", -1) || !file.rename(filePath)) {
        return false;
    }
    file.setAutoRemove(false);
    return true;
}

IconCache::IconCache(const QString &folder, const IconRules &rules)
    : m_folder(folder)
    , m_rules(rules)
{
}

QString IconCache::iconFile(const QString &path)
{
    return findOrDraw(path, QFileInfo(path));
}

QString IconCache::iconFile(const QFileInfo &entry)
{
    return findOrDraw(entry.absoluteFilePath(), entry);
}

QString IconCache::findOrDraw(const QString &path, const QFileInfo &source)
{
    if (m_folder.isEmpty()) {
        return {};
    }
    // A fixed seed gives a path the same file in every run.
    const QString key = QString::number(qHash(QStringView(path), 0), 16);
    QString target = m_folder % u'/' % m_rules.prefix % key % ".png"_L1;
    return QFile::exists(target) || draw(path, source, target) ? target : QString();
}

bool IconCache::draw(const QString &path, const QFileInfo &source, const QString &target)
{
    if (!m_rules.asksShell) {
        return save(pixmapOf(source), target);
    }
    return (source.exists() && save(pixmapOf(source), target))
           || save(platform::shellPixmap(path), target);
}

QPixmap IconCache::pixmapOf(const QFileInfo &source)
{
    QIcon icon = platform::linkIcon(source.filePath());
    if (icon.isNull()) {
        if (!m_provider) {
            m_provider.emplace();
        }
        icon = m_provider->icon(source);
    }
    return icon.pixmap(iconSize, QIcon::Normal, QIcon::Off);
}

bool IconCache::save(const QPixmap &pixmap, const QString &target) const
{
    if (pixmap.isNull() || !m_rules.isScaled || pixmap.size() == iconSize) {
        return saveIcon(pixmap, target);
    }
    return saveIcon(pixmap.scaled(iconSize, Qt::KeepAspectRatio, Qt::SmoothTransformation), target);
}
