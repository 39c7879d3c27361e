// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShellIcon.h"

#include "platform/Link.h"
#include "platform/linux/DesktopEntry.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// An icon is not null just because its file is damaged, or of a format without a plug-in.
bool canBeDrawn(const QIcon &icon)
{
    return !icon.pixmap(QSize(32, 32)).isNull();
}

} // namespace

QIcon linkIcon(const QString &filePath)
{
    if (QFileInfo(filePath).suffix().toLower() != linkSuffix()) {
        return {};
    }
    const std::optional<DesktopEntry> entry = DesktopEntry::load(filePath);
    if (!entry) {
        return {};
    }
    const QString name = entry->icon();
    if (name.isEmpty()) {
        // QIcon::fromTheme() would look into every folder of the theme for no name, each time anew.
        return QIcon::fromTheme(u"application-x-executable"_s);
    }
    const QIcon icon = name.startsWith(u'/') ? QIcon(name) : QIcon::fromTheme(name);
    return canBeDrawn(icon) ? icon : QIcon::fromTheme(u"application-x-executable"_s);
}

// There is no service here that would know more than QFileIconProvider does.
QPixmap shellPixmap(const QString &)
{
    return {};
}

} // namespace platform
