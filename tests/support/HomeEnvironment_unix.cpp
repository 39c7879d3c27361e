// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/HomeEnvironment.h"

namespace testhome {

bool enterHome(const QString &folder)
{
    const QByteArray home = folder.toLocal8Bit();
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", home + "/config");
    qputenv("XDG_CONFIG_DIRS", home + "/system");
    qputenv("XDG_DATA_HOME", home + "/data");
    qputenv("XDG_DATA_DIRS", home + "/system");
    qputenv("XDG_CACHE_HOME", home + "/cache");
    qputenv("XDG_STATE_HOME", home + "/state");
    qputenv("XDG_RUNTIME_DIR", home + "/runtime");
    qputenv("TMPDIR", home + "/tmp");
    qputenv("TZ", "UTC");
    return true;
}

void resetOutside() {}

void leaveHome() {}

} // namespace testhome
