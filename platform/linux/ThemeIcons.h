// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/ThemeIconEngine.h"

#include <QByteArray>
#include <QHash>
#include <QIcon>
#include <QList>
#include <QStringList>

namespace platform {

/// The icons of the icon theme, from the files that QIcon::fromTheme() takes. For many of them: Qt
/// looks for two files in each of a theme's hundreds of folders for every icon, and this object
/// reads such a folder once. It does not see what is installed, or which theme is chosen, later.
class ThemeIcons
{
public:
    /// Null if neither the theme, nor those that it falls back to, nor the folders outside of
    /// themes have the icon. The same icon, with the same key, for the same name.
    QIcon icon(const QString &name);

private:
    /// An existing folder of a theme.
    struct Folder
    {
        QByteArray path;
        IconSizes sizes;
    };

    class Theme
    {
    public:
        /// Reads the folders and the parents from the index of the theme.
        explicit Theme(const QString &name);

        QStringList parents() const { return m_parents; }

        /// The pictures of an icon, in the order of preference.
        QList<IconPicture> find(const QByteArray &name);

    private:
        void addFolders(const QString &index);
        void readFolders();
        static void addPicture(const Folder &folder, const QByteArray &name,
                               QList<IconPicture> &pictures);

        QList<Folder> m_folders;
        QStringList m_parents;
        int m_lookups = 0;
        bool m_isRead = false;
        QHash<QByteArray, QList<qsizetype>> m_foldersByName; // of an icon, once they are read
    };

    QList<IconPicture> find(const QStringList &names);
    void addThemes(const QString &name, QStringList &added);

    QHash<QString, QIcon> m_icons;
    QList<Theme> m_themes; // the theme and those that it falls back to, in the order of the search
};

} // namespace platform
