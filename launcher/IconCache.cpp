// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/IconCache.h"

#include "platform/IconTheme.h"
#include "platform/ImageFile.h"
#include "platform/PrivateFolder.h"
#include "platform/ShellPixmap.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHashFunctions>
#include <QIcon>
#include <QScreen>
#include <QStandardPaths>
#include <QStringBuilder>
#include <QTemporaryFile>
#include <QtMath>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize iconSize(32, 32);
constexpr int maximumFactor = 3;

QString folderInCache()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + "/icons"_L1;
    return platform::makePrivateFolder(folder) ? folder : QString();
}

// A fractional factor needs the file of the next higher one, which is then reduced.
QList<int> factorsOfScreens()
{
    QList<int> factors;
    for (const QScreen *screen : QGuiApplication::screens()) {
        const int factor = std::min(qCeil(screen->devicePixelRatio()), maximumFactor);
        if (factor > 1 && !factors.contains(factor)) {
            factors.append(factor);
        }
    }
    return factors;
}

// Empty for a null pixmap.
QByteArray pngContent(const QPixmap &pixmap)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return !pixmap.isNull() && pixmap.save(&buffer, "PNG", -1) ? buffer.data() : QByteArray();
}

// Not QSaveFile: it would wait for the disk, once per program at the first start.
bool saveContent(const QByteArray &content, const QString &filePath)
{
    QTemporaryFile file(QFileInfo(filePath).path() + "/XXXXXX.tmp"_L1);
    if (!file.open() || file.write(content) != content.size() || !file.rename(filePath)) {
        return false;
    }
    file.setAutoRemove(false);
    return true;
}

} // namespace

QString makeIconFolder()
{
    // Do not create a missing temporary folder. Before Qt 6.11, QDir::tempPath() is empty then.
    const QString temporary = QDir::tempPath();
    if (!QFileInfo(temporary).isDir()) {
        return folderInCache();
    }
    const QString parent = temporary + "/Vaskel"_L1;
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
    const QByteArray content = pngContent(pixmap);
    return !content.isEmpty() && saveContent(content, filePath);
}

IconCache::IconCache(const QString &folder, const IconRules &rules)
    : m_folder(folder)
    , m_rules(rules)
    , m_factors(rules.isScaled ? factorsOfScreens() : QList<int>())
{
}

void IconCache::listFolder()
{
    m_listed.clear();
    m_entries = platform::folderEntries(m_folder);
    m_listed.reserve(m_entries.size());
    for (const platform::FolderEntry &entry : std::as_const(m_entries)) {
        if (!entry.isFolder) {
            m_listed.insert(entry.name);
        }
    }
}

QString IconCache::iconFile(const QString &path)
{
    return findOrDraw(path, nullptr);
}

QString IconCache::iconFile(const QFileInfo &entry)
{
    return findOrDraw(entry.absoluteFilePath(), &entry);
}

QString IconCache::findOrDraw(const QString &path, const QFileInfo *source)
{
    if (m_folder.isEmpty()) {
        return {};
    }
    // A fixed seed gives a path the same file in every run.
    const QString key = QString::number(qHash(QStringView(path), 0), 16);
    QString target = m_folder % u'/' % m_rules.prefix % key % ".png"_L1;
    const auto drawInto = [&](const QString &file, int factor) {
        return draw(path, source ? *source : QFileInfo(path), file, factor);
    };
    if (!exists(target) && !drawInto(target, 1)) {
        return {};
    }
    for (const int factor : m_factors) {
        const QString file = platform::iconFileOfFactor(target, factor);
        if (!exists(file)) {
            drawInto(file, factor);
        }
    }
    return target;
}

// The folder may have got the file since it was listed.
bool IconCache::exists(const QString &file) const
{
    return m_listed.contains(QStringView(file).sliced(m_folder.size() + 1)) || QFile::exists(file);
}

bool IconCache::draw(const QString &path, const QFileInfo &source, const QString &target,
                     int factor)
{
    if (!m_rules.asksShell) {
        return drawIcon(iconOf(source), target, factor);
    }
    return (source.exists() && drawIcon(iconOf(source), target, factor))
           || saveIcon(fitted(platform::shellPixmap(path, factor * iconSize.width()), factor),
                       target);
}

QIcon IconCache::iconOf(const QFileInfo &source)
{
    if (!m_links) {
        m_links.emplace();
    }
    QIcon icon = m_links->icon(source.filePath());
    if (icon.isNull()) {
        icon = platform::fileTypeIcon(source);
    }
    if (icon.isNull()) {
        if (!m_provider) {
            m_provider.emplace();
        }
        icon = m_provider->icon(source);
    }
    return icon;
}

// Many programs have the same icon, which is drawn for the first of them.
bool IconCache::drawIcon(const QIcon &icon, const QString &target, int factor)
{
    if (icon.isNull()) {
        return false;
    }
    QByteArray &content = m_drawn[{icon.cacheKey(), factor}];
    if (content.isEmpty()) {
        // Without a factor, QIcon::pixmap() draws for the highest factor of the screens. An
        // unscaled file keeps that size.
        const QPixmap pixmap = factor > 1 ? icon.pixmap(iconSize, factor, QIcon::Normal, QIcon::Off)
                                          : icon.pixmap(iconSize, QIcon::Normal, QIcon::Off);
        content = pngContent(fitted(pixmap, factor));
    }
    return !content.isEmpty() && saveContent(content, target);
}

QPixmap IconCache::fitted(const QPixmap &pixmap, int factor) const
{
    const QSize size = iconSize * factor;
    return pixmap.isNull() || !m_rules.isScaled || pixmap.size() == size
               ? pixmap
               : pixmap.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}
