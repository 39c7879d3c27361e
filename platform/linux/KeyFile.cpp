// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/KeyFile.h"

#include "platform/RegularFile.h"

#include <QFile>

namespace platform {

namespace {

// The index of the largest icon theme has 100,000 bytes.
constexpr qint64 maximumSize = 1 << 22;

} // namespace

bool openKeyFile(QFile &file)
{
    return openRegularFile(file) && file.size() <= maximumSize;
}

bool readKeyFile(GKeyFile *keyFile, const QString &path)
{
    QFile file(path);
    if (!openKeyFile(file)) {
        return false;
    }
    const QByteArray data = file.readAll();
    return g_key_file_load_from_data(keyFile, data.constData(), gsize(data.size()), G_KEY_FILE_NONE,
                                     nullptr);
}

} // namespace platform
