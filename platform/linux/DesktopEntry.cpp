// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DesktopEntry.h"

#include <QFile>

#include <utility>

#include <gio/gdesktopappinfo.h>

#include <sys/stat.h>

namespace platform {

namespace {

// The largest known entries, translated into every language, have 50,000 bytes.
constexpr off_t maximumSize = 1 << 20;

// Opening a pipe would block, and a device may never end.
bool isSmallRegularFile(const QByteArray &fileName)
{
    struct stat status = {};
    return stat(fileName.constData(), &status) == 0 && S_ISREG(status.st_mode)
           && status.st_size <= maximumSize;
}

// The absolute path of a program, or the name as given if it is not installed.
QByteArray installedPath(const QByteArray &program)
{
    const TextPointer path(program.isEmpty() ? nullptr
                                             : g_find_program_in_path(program.constData()));
    return path ? QByteArray(path.get()) : program;
}

} // namespace

DesktopEntry::DesktopEntry(ObjectPointer<GDesktopAppInfo> entry)
    : m_entry(std::move(entry))
{
}

std::optional<DesktopEntry> DesktopEntry::load(const QString &filePath)
{
    const QByteArray fileName = QFile::encodeName(filePath);
    if (!isSmallRegularFile(fileName)) {
        return std::nullopt;
    }
    ObjectPointer<GDesktopAppInfo> entry(
        g_desktop_app_info_new_from_filename(fileName.constData()));
    return entry ? std::optional(DesktopEntry(std::move(entry))) : std::nullopt;
}

// GIO substitutes a name of its own for a missing one.
QString DesktopEntry::displayName() const
{
    return text(G_KEY_FILE_DESKTOP_KEY_NAME).isEmpty()
               ? QString()
               : QString::fromUtf8(g_app_info_get_display_name(G_APP_INFO(m_entry.get())));
}

QString DesktopEntry::icon() const
{
    GIcon *icon = g_app_info_get_icon(G_APP_INFO(m_entry.get()));
    const TextPointer name(icon ? g_icon_to_string(icon) : nullptr);
    return QString::fromUtf8(name.get());
}

bool DesktopEntry::hasCategory(const char *category) const
{
    return QByteArray(g_desktop_app_info_get_categories(m_entry.get()))
        .split(';')
        .contains(category);
}

bool DesktopEntry::canStart() const
{
    return !g_desktop_app_info_get_is_hidden(m_entry.get())
           && (g_app_info_get_commandline(G_APP_INFO(m_entry.get()))
               || g_desktop_app_info_get_boolean(m_entry.get(),
                                                 G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE));
}

bool DesktopEntry::isForThisDesktop() const
{
    return g_desktop_app_info_get_show_in(m_entry.get(), nullptr);
}

bool DesktopEntry::isListed() const
{
    return canStart() && g_app_info_should_show(G_APP_INFO(m_entry.get()));
}

QByteArray DesktopEntry::program() const
{
    return installedPath(g_app_info_get_executable(G_APP_INFO(m_entry.get())));
}

QByteArray DesktopEntry::tryExec() const
{
    return installedPath(text(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC));
}

QByteArray DesktopEntry::text(const char *key) const
{
    const TextPointer value(g_desktop_app_info_get_string(m_entry.get(), key));
    return {value.get()};
}

QByteArrayList currentDesktops()
{
    QByteArrayList desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    desktops.removeAll({});
    return desktops;
}

} // namespace platform
