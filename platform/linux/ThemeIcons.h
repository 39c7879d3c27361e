// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/ThemeIconEngine.h"

#include <QByteArray>
#include <QHash>
#include <QIcon>
#include <QList>
#include <QSet>
#include <QStringList>

#include <optional>

namespace platform {

/// The icons of the icon theme, from the files that QIcon::fromTheme() takes. For many of them: Qt
/// looks for two files in each of a theme's hundreds of folders for every icon, and this object
/// reads such a folder once. It does not see what is installed later.
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
        bool contains(const QByteArray &fileName);

        QByteArray path;
        IconSizes sizes;
        int lookups = 0;
        std::optional<QSet<QByteArray>> names = {}; // read after some look-ups
    };

    struct Theme
    {
        QList<Folder> folders;
        QStringList parents;
    };

    static Theme read(const QString &name);
    static void addFolders(Theme &theme, const QString &index);

    QList<IconPicture> find(const QString &themeName, const QStringList &names,
                            QStringList &visited);
    Theme &theme(const QString &name);

    QHash<QString, QIcon> m_icons;
    QHash<QString, Theme> m_themes;
};

} // namespace platform
