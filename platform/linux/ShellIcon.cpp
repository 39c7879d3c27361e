// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShellIcon.h"

#include "platform/ImageFile.h"
#include "platform/Link.h"
#include "platform/linux/DesktopEntry.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// A QIcon is not null even if its file is damaged or no plug-in reads the format.
bool canBeDrawn(const QIcon &icon)
{
    return !icon.pixmap(QSize(32, 32)).isNull();
}

// A name with a slash that is no absolute path would leave the folders of the theme.
QIcon iconOf(const QString &name)
{
    if (name.startsWith(u'/')) {
        return iconOfImageFile(name);
    }
    return name.contains(u'/') ? QIcon() : QIcon::fromTheme(name);
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
    const QIcon icon = iconOf(name);
    return canBeDrawn(icon) ? icon : QIcon::fromTheme(u"application-x-executable"_s);
}

// Linux has no service that knows more icons than QFileIconProvider.
QPixmap shellPixmap(const QString &, int)
{
    return {};
}

} // namespace platform
