// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DesktopEntry.h"

#include <QFile>

#include <utility>

#include <sys/stat.h>

namespace platform {

namespace {

constexpr const char *group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char *fullNameKey = "X-GNOME-FullName";

// The largest entries that are around, with translations into every language, take 50,000 bytes.
constexpr off_t maximumSize = 1 << 20;

// Opening a pipe would wait for a writer, and a device might never end.
bool isOrdinaryFile(const QByteArray &fileName)
{
    struct stat status = {};
    return stat(fileName.constData(), &status) == 0 && S_ISREG(status.st_mode)
           && status.st_size <= maximumSize;
}

bool isInstalled(const QByteArray &program, const QByteArray &workingFolder)
{
    const bool isInWorkingFolder =
        !workingFolder.isEmpty() && program.contains('/') && !program.startsWith('/');
    const QByteArray place = isInWorkingFolder ? workingFolder + '/' + program : program;
    const TextPointer found(g_find_program_in_path(place.constData()));
    return found != nullptr;
}

} // namespace

DesktopEntry::DesktopEntry(KeyFilePointer keyFile)
    : m_keyFile(std::move(keyFile))
{
}

std::optional<DesktopEntry> DesktopEntry::load(const QString &filePath)
{
    const QByteArray fileName = QFile::encodeName(filePath);
    if (!isOrdinaryFile(fileName)) {
        return std::nullopt;
    }
    KeyFilePointer file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), fileName.constData(), G_KEY_FILE_NONE, nullptr)) {
        return std::nullopt;
    }
    return DesktopEntry(std::move(file));
}

QString DesktopEntry::displayName() const
{
    const QString name = localizedText(G_KEY_FILE_DESKTOP_KEY_NAME);
    return hasKey(fullNameKey) && !name.isEmpty() ? localizedText(fullNameKey) : name;
}

// A name with the suffix of a file is a common mistake.
QString DesktopEntry::icon() const
{
    const QString icon = localizedText(G_KEY_FILE_DESKTOP_KEY_ICON);
    const bool hasSuffix = icon.endsWith(QLatin1String(".png"))
                           || icon.endsWith(QLatin1String(".svg"))
                           || icon.endsWith(QLatin1String(".xpm"));
    return hasSuffix && !icon.startsWith(QLatin1Char('/')) ? icon.chopped(4) : icon;
}

bool DesktopEntry::hasCategory(const char *category) const
{
    return listContains(G_KEY_FILE_DESKTOP_KEY_CATEGORIES, category);
}

bool DesktopEntry::canStart() const
{
    if (!isApplication() || isTrue(G_KEY_FILE_DESKTOP_KEY_HIDDEN)) {
        return false;
    }
    const QByteArray condition = text(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    if (!condition.isEmpty() && !isInstalled(condition, text(G_KEY_FILE_DESKTOP_KEY_PATH))) {
        return false;
    }
    return isCommandInstalled();
}

// The first of the desktop's names that either list holds decides.
bool DesktopEntry::isForThisDesktop() const
{
    const bool isRestricted = hasKey(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    if (!isRestricted && !hasKey(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN)) {
        return true;
    }
    const QByteArrayList desktops = currentDesktops();
    for (const QByteArray &desktop : desktops) {
        if (listContains(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, desktop.constData())) {
            return true;
        }
        if (listContains(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN, desktop.constData())) {
            return false;
        }
    }
    return !isRestricted;
}

bool DesktopEntry::isListed() const
{
    return !isTrue(G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY) && isForThisDesktop() && canStart();
}

// GLib words a message for each missing key that it is asked for, which takes longer than to look.
bool DesktopEntry::hasKey(const char *key) const
{
    return g_key_file_has_key(m_keyFile.get(), group, key, nullptr);
}

bool DesktopEntry::isTrue(const char *key) const
{
    return hasKey(key) && g_key_file_get_boolean(m_keyFile.get(), group, key, nullptr);
}

QByteArray DesktopEntry::text(const char *key) const
{
    if (!hasKey(key)) {
        return {};
    }
    const TextPointer value(g_key_file_get_string(m_keyFile.get(), group, key, nullptr));
    return {value.get()};
}

QString DesktopEntry::localizedText(const char *key) const
{
    const TextPointer value(
        g_key_file_get_locale_string(m_keyFile.get(), group, key, nullptr, nullptr));
    return QString::fromUtf8(value.get());
}

bool DesktopEntry::listContains(const char *key, const char *wanted) const
{
    const TextListPointer list(
        g_key_file_get_string_list(m_keyFile.get(), group, key, nullptr, nullptr));
    return list && g_strv_contains(list.get(), wanted);
}

bool DesktopEntry::isApplication() const
{
    const TextPointer startGroup(g_key_file_get_start_group(m_keyFile.get()));
    return g_strcmp0(startGroup.get(), group) == 0
           && text(G_KEY_FILE_DESKTOP_KEY_TYPE) == G_KEY_FILE_DESKTOP_TYPE_APPLICATION;
}

bool DesktopEntry::isCommandInstalled() const
{
    const QByteArray command = text(G_KEY_FILE_DESKTOP_KEY_EXEC);
    if (command.isEmpty()) {
        return isTrue(G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE);
    }
    char **words = nullptr;
    if (!g_shell_parse_argv(command.constData(), nullptr, &words, nullptr)) {
        return false;
    }
    const TextListPointer list(words);
    return isInstalled(words[0], text(G_KEY_FILE_DESKTOP_KEY_PATH));
}

QByteArrayList currentDesktops()
{
    QByteArrayList desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    desktops.removeAll({});
    return desktops;
}

} // namespace platform
