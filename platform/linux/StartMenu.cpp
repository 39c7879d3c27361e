// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/DesktopFileId.h"
#include "platform/linux/StartMenuCache.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <optional>

#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

QStringList rootsBefore(const QString &root)
{
    QStringList roots = startMenuRoots();
    roots.erase(std::find(roots.begin(), roots.end(), root), roots.end());
    roots.removeIf([](const QString &earlier) { return !QFileInfo::exists(earlier); });
    return roots;
}

bool isOverridden(const QStringList &earlierRoots, const QString &id)
{
    return std::any_of(earlierRoots.begin(), earlierRoots.end(),
                       [&id](const QString &root) { return !fileOfId(root, id).isEmpty(); });
}

StartMenuCache::FileState fileStateOf(const QString &filePath)
{
    struct stat status = {};
    if (stat(QFile::encodeName(filePath).constData(), &status) != 0) {
        return {};
    }
    return {qint64(status.st_dev), qint64(status.st_ino), qint64(status.st_size),
            qint64(status.st_mtim.tv_sec), qint64(status.st_mtim.tv_nsec)};
}

// A program can be removed without a change to its entry.
bool isStillInstalled(const QByteArray &program)
{
    return program.isEmpty() || access(program.constData(), X_OK) == 0;
}

std::optional<StartMenuCache::Entry> readEntry(const QString &filePath)
{
    const std::optional<DesktopEntry> entry = DesktopEntry::load(filePath);
    if (!entry) {
        return std::nullopt;
    }
    return StartMenuCache::Entry{entry->isListed() ? entry->displayName() : QString(),
                                 entry->program(), entry->tryExec()};
}

// Rejected entries are not cached: the missing program may be installed later.
QString nameOf(const QString &filePath, StartMenuCache *cache)
{
    const QString fileName = filePath.sliced(filePath.lastIndexOf(u'/') + 1);
    const StartMenuCache::FileState state = fileStateOf(filePath);
    const StartMenuCache::Entry *kept = cache->find(fileName, state);
    if (kept && isStillInstalled(kept->program) && isStillInstalled(kept->tryExec)) {
        return kept->name;
    }
    std::optional<StartMenuCache::Entry> entry = readEntry(filePath);
    if (!entry) {
        return {};
    }
    entry->state = state;
    cache->insert(fileName, *entry);
    return entry->name;
}

} // namespace

QStringList startMenuRoots()
{
    QStringList roots = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    std::transform(roots.begin(), roots.end(), roots.begin(), &QDir::cleanPath);
    roots.removeDuplicates();
    return roots;
}

QHash<QString, QString> startMenuNames(const QString &root, const QStringList &filePaths)
{
    if (filePaths.isEmpty()) {
        return {};
    }
    const QStringList earlierRoots = rootsBefore(root);
    StartMenuCache cache(QFileInfo(filePaths.first()).path());
    QHash<QString, QString> names;
    for (const QString &filePath : filePaths) {
        if (!earlierRoots.isEmpty() && isOverridden(earlierRoots, desktopFileId(root, filePath))) {
            continue;
        }
        if (const QString name = nameOf(filePath, &cache); !name.isEmpty()) {
            names.insert(filePath, name);
        }
    }
    cache.save();
    return names;
}

} // namespace platform
