// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ContainingFolder.h"

#include "platform/Folder.h"

#include <QDir>
#include <QFileInfo>

#include <objbase.h>
#include <shlobj.h>

namespace platform {

namespace {

bool selectInFolder(const QString &path)
{
    const HRESULT started = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    PIDLIST_ABSOLUTE item = ILCreateFromPathW(qUtf16Printable(QDir::toNativeSeparators(path)));
    const bool isShown = item && SUCCEEDED(SHOpenFolderAndSelectItems(item, 0, nullptr, 0));
    ILFree(item);
    if (SUCCEEDED(started)) {
        CoUninitialize();
    }
    return isShown;
}

} // namespace

bool showInFolder(const QString &path)
{
    const QFileInfo file(path);
    return file.isAbsolute() && file.exists()
           && (selectInFolder(path) || openFolder(file.absolutePath()));
}

} // namespace platform
