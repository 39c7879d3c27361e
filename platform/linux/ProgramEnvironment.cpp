// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProgramEnvironment.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace platform {

QProcessEnvironment programEnvironment()
{
    static const QStringList privateNames = {
        // the notes of the desktop, of GIO and of D-Bus on the start of this process
        u"DESKTOP_STARTUP_ID"_s, u"XDG_ACTIVATION_TOKEN"_s, u"DESKTOP_AUTOSTART_ID"_s,
        u"GIO_LAUNCHED_DESKTOP_FILE"_s, u"GIO_LAUNCHED_DESKTOP_FILE_PID"_s,
        u"BAMF_DESKTOP_FILE_HINT"_s, u"DBUS_STARTER_ADDRESS"_s, u"DBUS_STARTER_BUS_TYPE"_s,
        // what systemd tells the one process that it starts
        u"INVOCATION_ID"_s, u"JOURNAL_STREAM"_s, u"MANAGERPID"_s, u"MANAGERPIDFDID"_s,
        u"SYSTEMD_EXEC_PID"_s, u"NOTIFY_SOCKET"_s, u"FDSTORE"_s, u"WATCHDOG_PID"_s,
        u"WATCHDOG_USEC"_s, u"LISTEN_PID"_s, u"LISTEN_PIDFDID"_s, u"LISTEN_FDS"_s,
        u"LISTEN_FDNAMES"_s, u"MEMORY_PRESSURE_WATCH"_s, u"MEMORY_PRESSURE_WRITE"_s,
        u"CREDENTIALS_DIRECTORY"_s};

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : privateNames) {
        environment.remove(name);
    }
    return environment;
}

} // namespace platform
