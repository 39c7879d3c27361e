// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShellIcon.h"

#include "platform/windows/PixmapFromHicon.h"

#include <QDir>
#include <QFileInfo>

#include <shellapi.h>

namespace platform {

// QFileIconProvider asks Windows, which knows the icons of links.
QIcon linkIcon(const QString &)
{
    return {};
}

QPixmap shellPixmap(const QString &path)
{
    // The shell needs backslashes in the path of a file, but not in an address.
    const QString name = QFileInfo::exists(path) ? QDir::toNativeSeparators(path) : path;
    SHFILEINFOW info{};
    if (!SHGetFileInfoW(qUtf16Printable(name), 0, &info, sizeof(info), SHGFI_ICON) || !info.hIcon) {
        return {};
    }
    QPixmap pixmap = iconToPixmap(info.hIcon);
    DestroyIcon(info.hIcon);
    return pixmap;
}

} // namespace platform
