// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <array>

class QDataStream;

namespace platform {

/// A cache of the desktop entries of one folder, in the user's cache folder. Reading hundreds of
/// entries takes most of a start, and they hardly ever change. An entry is valid while the file's
/// time, size and inode, the languages and the desktop stay the same. A missing or damaged cache
/// counts as empty.
class StartMenuCache
{
public:
    /// Device, inode, size and modification time of a file; all zero if it does not exist.
    using FileState = std::array<qint64, 5>;

    /// The data of one file that the menu needs.
    struct Entry
    {
        QString name;        ///< empty if the file is not to be listed
        QByteArray program;  ///< path of the program in Exec; may be empty
        QByteArray tryExec;  ///< path of the program in TryExec; may be empty
        FileState state{};   ///< state of the file when it was read
        bool isUsed = false; ///< found or inserted in this start; save() keeps only these
    };

    /// Loads the cache of the folder.
    explicit StartMenuCache(const QString &folder);

    /// Returns null for a file that is not cached or has changed. The pointer is valid until
    /// insert().
    const Entry *find(const QString &fileName, const FileState &state);

    void insert(const QString &fileName, const Entry &entry);

    /// Saves the entries that were found or inserted and drops the others. Writes only if something
    /// changed. A failure is silent: the next start reads the files again.
    void save();

private:
    QString m_file;
    QHash<QString, Entry> m_entries; // by file name
    bool m_isChanged = false;
};

QDataStream &operator<<(QDataStream &stream, const StartMenuCache::Entry &entry);
QDataStream &operator>>(QDataStream &stream, StartMenuCache::Entry &entry);

} // namespace platform
