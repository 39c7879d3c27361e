// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include "platform/linux/DesktopEntry.h"

#include <QFile>

#include <array>
#include <csignal>

#include <gio/gdesktopappinfo.h>

#include <unistd.h>

namespace platform {

namespace {

constexpr const char *group = G_KEY_FILE_DESKTOP_GROUP;

// Runs between fork and exec, where little more than system calls is allowed.
void standAlone(void *)
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
                                                     G_SPAWN_SEARCH_PATH, &standAlone, nullptr,
                                                     nullptr, nullptr, nullptr);
}

// An entry with a command is started by it even where D-Bus might do so. The bus gives programs its
// own environment, on many sessions one without a display, and does not tell whether they start.
bool takesCommandInsteadOfBus(GDesktopAppInfo *application)
{
    return g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE)
           && g_app_info_get_commandline(G_APP_INFO(application));
}

// Starts an altered copy of an entry. Only %k, the place of the entry itself, is lost on the way.
bool launchCopy(GKeyFile *entry)
{
    const ObjectPointer<GDesktopAppInfo> application(g_desktop_app_info_new_from_keyfile(entry));
    return application && launch(application.get());
}

KeyFilePointer copyOf(const QString &filePath)
{
    KeyFilePointer entry(g_key_file_new());
    g_key_file_load_from_file(entry.get(), QFile::encodeName(filePath).constData(), G_KEY_FILE_NONE,
                              nullptr);
    g_key_file_remove_key(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, nullptr);
    return entry;
}

bool launchWithoutBus(const QString &filePath)
{
    return launchCopy(copyOf(filePath).get());
}

// Terminals that take a command behind "-e" and that GIO does not know of.
QByteArray furtherTerminal()
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

bool launchInFurtherTerminal(const QString &filePath)
{
    const QByteArray terminal = furtherTerminal();
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
        takesCommandInsteadOfBus(application) ? launchWithoutBus(filePath) : launch(application);
    const bool needsTerminal =
        g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    return isStarted || (needsTerminal && launchInFurtherTerminal(filePath));
}

} // namespace platform
