// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessEnvironment.h"

#include <QByteArray>

namespace platform {

namespace {

constexpr const char *windowSystem = "QT_QPA_PLATFORM";

// A Wayland desktop has an X server too; fall back to Wayland if it does not answer.
constexpr const char *preferredWindowSystems = "xcb;wayland";

constexpr const char *privateVariables[] = {
    // set by the desktop, GIO and D-Bus for the start of this process
    "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN", "DESKTOP_AUTOSTART_ID",
    "GIO_LAUNCHED_DESKTOP_FILE", "GIO_LAUNCHED_DESKTOP_FILE_PID", "BAMF_DESKTOP_FILE_HINT",
    "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE",
    // set by systemd for its direct child
    "INVOCATION_ID", "JOURNAL_STREAM", "MANAGERPID", "MANAGERPIDFDID", "SYSTEMD_EXEC_PID",
    "NOTIFY_SOCKET", "FDSTORE", "WATCHDOG_PID", "WATCHDOG_USEC", "LISTEN_PID", "LISTEN_PIDFDID",
    "LISTEN_FDS", "LISTEN_FDNAMES", "MEMORY_PRESSURE_WATCH", "MEMORY_PRESSURE_WRITE",
    "CREDENTIALS_DIRECTORY"};

} // namespace

void chooseWindowSystem()
{
    if (qEnvironmentVariableIsEmpty(windowSystem) && !qEnvironmentVariableIsEmpty("DISPLAY")) {
        qputenv(windowSystem, preferredWindowSystems);
    }
}

void unsetPrivateVariables()
{
    for (const char *name : privateVariables) {
        qunsetenv(name);
    }
    if (qgetenv(windowSystem) == preferredWindowSystems) {
        qunsetenv(windowSystem);
    }
}

WithoutWindowSystem::WithoutWindowSystem()
    : m_windowSystem(qgetenv(windowSystem))
{
    qputenv(windowSystem, "offscreen");
}

WithoutWindowSystem::~WithoutWindowSystem()
{
    if (m_windowSystem.isNull()) {
        qunsetenv(windowSystem);
    } else {
        qputenv(windowSystem, m_windowSystem);
    }
}

} // namespace platform
