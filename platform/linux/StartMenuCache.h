// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <array>

class QDataStream;

namespace platform {

/// What an earlier start has read from the desktop entries of one folder, kept in the user's cache
/// folder. Reading hundreds of entries takes longer than all else that a start does, and they
/// hardly ever change. What is kept of a file counts as long as its time, size and inode are the
/// same, and as language and desktop are; a cache that is missing or damaged is an empty one.
class StartMenuCache
{
public:
    /// Of the state of a file, so that a change of it gives another one; all zero if there is none.
    using Identity = std::array<qint64, 5>;

    /// What a menu needs to know of a file.
    struct Entry
    {
        QString name;          ///< empty if the file is not to be listed
        QByteArray program;    ///< path of the program that it starts; empty if it starts none
        QByteArray tryExec;    ///< path of the program that it asks for; empty if it asks for none
        Identity identity{};   ///< of the state of the file that this was read from
        bool isWanted = false; ///< asked for in this start, and so to be kept for the next
    };

    /// Reads what is kept of the folder.
    explicit StartMenuCache(const QString &folder);

    /// Null for a file that is not kept, or that has changed since. The answer stays good until the
    /// next call of insert().
    const Entry *find(const QString &fileName, const Identity &identity);

    void insert(const QString &fileName, const Entry &entry);

    /// Keeps what was found or inserted, and nothing else; writes only if that is a change. Failing
    /// to write only costs the next start its time.
    void save();

private:
    QString m_file;
    QHash<QString, Entry> m_entries; // by the name of the file in the folder
    bool m_isChanged = false;
};

QDataStream &operator<<(QDataStream &stream, const StartMenuCache::Entry &entry);
QDataStream &operator>>(QDataStream &stream, StartMenuCache::Entry &entry);

} // namespace platform
