// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIcon.h"

#include "platform/Link.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/IconTheme.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// An icon is not null just because its file is damaged, or of a format without a plug-in.
bool canBeDrawn(const QIcon &icon)
{
    return !icon.pixmap(QSize(32, 32)).isNull();
}

QIcon iconFromFile(GFile *file)
{
    const TextPointer path(g_file_get_path(file));
    return path ? QIcon(QFile::decodeName(path.get())) : QIcon();
}

QIcon iconFromTheme(GThemedIcon *icon)
{
    for (const char *const *name = g_themed_icon_get_names(icon); *name; ++name) {
        if (const QIcon found = QIcon::fromTheme(QString::fromUtf8(*name)); !found.isNull()) {
            return found;
        }
    }
    return {};
}

QIcon ownIcon(GAppInfo *application)
{
    GIcon *icon = g_app_info_get_icon(application);
    if (G_IS_FILE_ICON(icon)) {
        return iconFromFile(g_file_icon_get_file(G_FILE_ICON(icon)));
    }
    return G_IS_THEMED_ICON(icon) ? iconFromTheme(G_THEMED_ICON(icon)) : QIcon();
}

} // namespace

QIcon linkIcon(const QString &filePath)
{
    if (QFileInfo(filePath).suffix().toLower() != linkSuffix()) {
        return {};
    }
    const ObjectPointer<GDesktopAppInfo> application = loadApplication(filePath);
    if (!application) {
        return {};
    }
    prepareIconTheme();
    const QIcon icon = ownIcon(G_APP_INFO(application.get()));
    return canBeDrawn(icon) ? icon : QIcon::fromTheme(u"application-x-executable"_s);
}

// There is no service here that would know more than QFileIconProvider does.
QPixmap shellPixmap(const QString &)
{
    return {};
}

} // namespace platform
