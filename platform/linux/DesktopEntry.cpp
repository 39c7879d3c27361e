// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DesktopEntry.h"

#include <QFile>

#include <sys/stat.h>

namespace platform {

namespace {

// The largest entries that are around, with translations into every language, take 50,000 bytes.
constexpr off_t maximumSize = 1 << 20;

// Opening a pipe would wait for a writer, and a device might never end.
bool isReadableEntry(const QByteArray &fileName)
{
    struct stat status = {};
    return stat(fileName.constData(), &status) == 0 && S_ISREG(status.st_mode)
           && status.st_size <= maximumSize;
}

} // namespace

KeyFilePointer loadDesktopEntry(const QString &filePath)
{
    const QByteArray fileName = QFile::encodeName(filePath);
    if (!isReadableEntry(fileName)) {
        return nullptr;
    }
    KeyFilePointer entry(g_key_file_new());
    if (!g_key_file_load_from_file(entry.get(), fileName.constData(), G_KEY_FILE_NONE, nullptr)) {
        return nullptr;
    }
    return entry;
}

ObjectPointer<GDesktopAppInfo> loadApplication(const QString &filePath)
{
    const QByteArray fileName = QFile::encodeName(filePath);
    if (!isReadableEntry(fileName)) {
        return nullptr;
    }
    return ObjectPointer<GDesktopAppInfo>(
        g_desktop_app_info_new_from_filename(fileName.constData()));
}

} // namespace platform
