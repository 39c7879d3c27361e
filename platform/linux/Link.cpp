// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/KeyFile.h"

#include <array>
#include <csignal>

#include <gio/gdesktopappinfo.h>

#include <unistd.h>

namespace platform {

namespace {

constexpr const char *group = G_KEY_FILE_DESKTOP_GROUP;

// Runs between fork and exec, so it may only call async-signal-safe functions.
void detachChild(void *)
{
    setsid();
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int number = 1; number < NSIG; ++number) {
        std::signal(number, SIG_DFL);
    }
}

bool launch(GDesktopAppInfo *application)
{
    const ObjectPointer<GAppLaunchContext> context(g_app_launch_context_new());
    return g_desktop_app_info_launch_uris_as_manager(application, nullptr, context.get(),
                                                     G_SPAWN_SEARCH_PATH, &detachChild, nullptr,
                                                     nullptr, nullptr, nullptr);
}

// Prefer an entry's command to D-Bus activation. Programs started by the bus get its environment,
// which may lack a display, and the bus does not report whether they start.
bool hasCommandAndDBus(GDesktopAppInfo *application)
{
    return g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE)
           && g_app_info_get_commandline(G_APP_INFO(application));
}

// Starts a modified copy of an entry. The copy has no file, so %k expands to nothing.
bool launchCopy(GKeyFile *entry)
{
    const ObjectPointer<GDesktopAppInfo> application(g_desktop_app_info_new_from_keyfile(entry));
    return application && launch(application.get());
}

KeyFilePointer copyOf(const QString &filePath)
{
    KeyFilePointer entry(g_key_file_new());
    readKeyFile(entry.get(), filePath);
    g_key_file_remove_key(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, nullptr);
    return entry;
}

bool launchWithoutDBus(const QString &filePath)
{
    return launchCopy(copyOf(filePath).get());
}

// Terminals unknown to GIO that accept a command after "-e".
QByteArray fallbackTerminal()
{
    constexpr std::array names = {
        "x-terminal-emulator", "qterminal", "kitty", "alacritty", "foot", "urxvt", "st"};
    for (const char *name : names) {
        if (const TextPointer program{g_find_program_in_path(name)}) {
            return name;
        }
    }
    return {};
}

bool launchInFallbackTerminal(const QString &filePath)
{
    const QByteArray terminal = fallbackTerminal();
    const KeyFilePointer entry = copyOf(filePath);
    const TextPointer command(
        g_key_file_get_string(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
    if (terminal.isEmpty() || !command) {
        return false;
    }
    const QByteArray wrapped = terminal + " -e " + command.get();
    g_key_file_set_string(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_EXEC, wrapped.constData());
    g_key_file_set_boolean(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_TERMINAL, FALSE);
    return launchCopy(entry.get());
}

} // namespace

QString linkSuffix()
{
    return QStringLiteral("desktop");
}

bool openLink(const QString &filePath)
{
    const std::optional<DesktopEntry> entry = DesktopEntry::load(filePath);
    if (!entry) {
        return false;
    }
    GDesktopAppInfo *application = entry->info();
    const bool isStarted =
        hasCommandAndDBus(application) ? launchWithoutDBus(filePath) : launch(application);
    const bool needsTerminal =
        g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    return isStarted || (needsTerminal && launchInFallbackTerminal(filePath));
}

} // namespace platform
