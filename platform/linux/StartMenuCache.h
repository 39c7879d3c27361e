// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <array>

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
        QString name;       ///< empty if the file is not to be listed
        QByteArray program; ///< path of the program in Exec; may be empty
        QByteArray tryExec; ///< path of the program in TryExec; may be empty
        FileState state{};  ///< state of the file when it was read
    };

    /// Loads the cache of the folder.
    explicit StartMenuCache(const QString &folder);

    /// Returns null for a file that is not cached or has changed. Call once for each file. The
    /// pointer is valid until insert(), and the texts of the entry as long as this object.
    const Entry *find(QStringView fileName, const FileState &state);

    /// Adds the entry of a file, in place of an outdated one. Call once for each file.
    void insert(const QString &fileName, const Entry &entry);

    /// Saves the entries that were found or inserted and drops the others. Writes only if something
    /// changed. A failure is silent: the next start reads the files again.
    void save();

private:
    struct File
    {
        QString name;
        Entry entry;
        bool isUsed = false; // found or inserted in this start; save() keeps only these
    };

    bool load();
    qsizetype indexOf(QStringView fileName);

    QString m_file;
    QByteArray m_content; // of the file; the texts of its entries are parts of it
    QList<File> m_files;
    qsizetype m_next = 0;                    // most folders are read in the same order each time
    QHash<QStringView, qsizetype> m_indices; // of the loaded files, once the order differs
    bool m_isChanged = false;
};

} // namespace platform
