// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/IconTheme.h"

#include "platform/linux/InstalledIconThemes.h"

#include <QIcon>
#include <QStandardPaths>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

void addPixmapFolders()
{
    QStringList folders = QIcon::fallbackSearchPaths();
    for (const QString &data :
         QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        folders.append(data + "/pixmaps"_L1);
    }
    folders.removeDuplicates();
    QIcon::setFallbackSearchPaths(folders);
}

} // namespace

void ensureIconTheme()
{
    const QString theme = QIcon::themeName();
    if (theme == "hicolor"_L1 || !isIconTheme(QIcon::themeSearchPaths(), theme)) {
        QIcon::setFallbackThemeName(richestIconTheme(QIcon::themeSearchPaths()));
    }
    addPixmapFolders();
}

} // namespace platform
