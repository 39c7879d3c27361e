// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/IconTheme.h"

#include "platform/linux/InstalledIconThemes.h"

#include <QFileInfo>
#include <QIcon>
#include <QMimeDatabase>
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

QIcon fileTypeIcon(const QFileInfo &file)
{
    // A file without a suffix would have to be read, which may take long.
    if (file.suffix().isEmpty() || !file.isFile()) {
        return {};
    }
    const QMimeType type = QMimeDatabase().mimeTypeForFile(file);
    if (type.isDefault()) {
        return {};
    }
    const QIcon icon = QIcon::fromTheme(type.iconName());
    return icon.isNull() ? QIcon::fromTheme(type.genericIconName()) : icon;
}

} // namespace platform
