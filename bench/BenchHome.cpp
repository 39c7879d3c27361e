// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchHome.h"

#include <QFile>

void useHome(const QString &home)
{
    const QByteArray path = QFile::encodeName(home);
    qputenv("HOME", path);
    qputenv("XDG_DATA_HOME", path + "/data");
    qputenv("XDG_DATA_DIRS", path + "/system");
    qputenv("XDG_CONFIG_HOME", path + "/config");
    qputenv("XDG_CACHE_HOME", path + "/cache");
    qputenv("XDG_RUNTIME_DIR", path);
    qputenv("TMPDIR", path);
    qputenv("QT_QPA_PLATFORM", "offscreen");
}
