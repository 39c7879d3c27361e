// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShellPixmap.h"

#include "platform/windows/PixmapFromHicon.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>

#include <commctrl.h>
#include <commoncontrols.h>
#include <shellapi.h>
#include <shlobj.h>

namespace platform {

namespace {

constexpr int largeIconWidth = 32; // of the icon that SHGetFileInfoW() returns
constexpr int extraLargeWidth = 48;

QPixmap takePixmap(HICON icon)
{
    QPixmap pixmap = iconToPixmap(icon);
    DestroyIcon(icon);
    return pixmap;
}

// In the list of the largest icons, a smaller one is in the upper left corner of an empty picture.
QPixmap withoutEmptySpace(const QPixmap &pixmap)
{
    const QRect corner(0, 0, extraLargeWidth, extraLargeWidth);
    const QImage rest = pixmap.toImage();
    for (int y = 0; y < rest.height(); ++y) {
        for (int x = 0; x < rest.width(); ++x) {
            if (!corner.contains(x, y) && qAlpha(rest.pixel(x, y)) != 0) {
                return pixmap;
            }
        }
    }
    return pixmap.copy(corner);
}

// Null if the shell has no icon or no such list.
QPixmap pixmapOfImageList(const QString &name, int width)
{
    SHFILEINFOW info{};
    if (!SHGetFileInfoW(qUtf16Printable(name), 0, &info, sizeof(info), SHGFI_SYSICONINDEX)) {
        return {};
    }
    const bool isJumbo = width > extraLargeWidth;
    IImageList *list = nullptr;
    if (FAILED(SHGetImageList(isJumbo ? SHIL_JUMBO : SHIL_EXTRALARGE, IID_PPV_ARGS(&list)))) {
        return {};
    }
    HICON icon = nullptr;
    const HRESULT result = list->GetIcon(info.iIcon, ILD_TRANSPARENT, &icon);
    list->Release();
    if (FAILED(result) || !icon) {
        return {};
    }
    return isJumbo ? withoutEmptySpace(takePixmap(icon)) : takePixmap(icon);
}

} // namespace

QPixmap shellPixmap(const QString &path, int width)
{
    // The shell needs backslashes in the path of a file, but not in an address.
    const QString name = QFileInfo::exists(path) ? QDir::toNativeSeparators(path) : path;
    if (width > largeIconWidth) {
        QPixmap pixmap = pixmapOfImageList(name, width);
        if (!pixmap.isNull()) {
            return pixmap;
        }
    }
    SHFILEINFOW info{};
    if (!SHGetFileInfoW(qUtf16Printable(name), 0, &info, sizeof(info), SHGFI_ICON) || !info.hIcon) {
        return {};
    }
    return takePixmap(info.hIcon);
}

} // namespace platform
