// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/DesktopFileId.h"
#include "platform/linux/FileName.h"
#include "platform/linux/StartMenuCache.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <optional>

#include <fcntl.h>
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

/// Keeps the folder of the links open, so that the system need not resolve its path for each link.
class OpenFolder
{
public:
    explicit OpenFolder(const QString &path)
        : m_descriptor(open(encodedName(path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
    }
    ~OpenFolder()
    {
        if (m_descriptor != -1) {
            close(m_descriptor);
        }
    }
    Q_DISABLE_COPY_MOVE(OpenFolder)

    StartMenuCache::FileState stateOf(const QString &fileName) const;

private:
    int m_descriptor;
};

StartMenuCache::FileState OpenFolder::stateOf(const QString &fileName) const
{
    struct stat status = {};
    if (fstatat(m_descriptor, encodedName(fileName).constData(), &status, 0) != 0) {
        return {};
    }
    return {qint64(status.st_dev), qint64(status.st_ino), qint64(status.st_size),
            qint64(status.st_mtim.tv_sec), qint64(status.st_mtim.tv_nsec)};
}

/// Looks each program up once. A program can be removed without a change to its entry.
class InstalledPrograms
{
public:
    bool contain(const QByteArray &program);

private:
    QHash<QByteArray, bool> m_known;
};

bool InstalledPrograms::contain(const QByteArray &program)
{
    if (program.isEmpty()) {
        return true;
    }
    const auto known = m_known.constFind(program);
    return known != m_known.cend()
               ? *known
               : *m_known.insert(program, access(program.constData(), X_OK) == 0);
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

/// The names of the links of one folder.
class FolderNames
{
public:
    explicit FolderNames(const QString &path)
        : m_folder(path)
        , m_cache(path)
    {
    }

    /// Empty if the file must not be listed.
    QString nameOf(const QString &filePath);

    void save() { m_cache.save(); }

private:
    OpenFolder m_folder;
    StartMenuCache m_cache;
    InstalledPrograms m_programs;
};

// Rejected entries are not cached: the missing program may be installed later.
QString FolderNames::nameOf(const QString &filePath)
{
    const QString fileName = filePath.sliced(filePath.lastIndexOf(u'/') + 1);
    const StartMenuCache::FileState state = m_folder.stateOf(fileName);
    const StartMenuCache::Entry *kept = m_cache.find(fileName, state);
    if (kept && m_programs.contain(kept->program) && m_programs.contain(kept->tryExec)) {
        return QString(kept->name.constData(), kept->name.size()); // not a part of the cache file
    }
    std::optional<StartMenuCache::Entry> entry = readEntry(filePath);
    if (!entry) {
        return {};
    }
    entry->state = state;
    m_cache.insert(fileName, *entry);
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
    FolderNames folder(QFileInfo(filePaths.first()).path());
    QHash<QString, QString> names;
    names.reserve(filePaths.size());
    for (const QString &filePath : filePaths) {
        if (!earlierRoots.isEmpty() && isOverridden(earlierRoots, desktopFileId(root, filePath))) {
            continue;
        }
        if (const QString name = folder.nameOf(filePath); !name.isEmpty()) {
            names.insert(filePath, name);
        }
    }
    folder.save();
    return names;
}

} // namespace platform
