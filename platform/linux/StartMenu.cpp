// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include "platform/linux/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

#include <sys/stat.h>

// GDesktopAppInfo would answer the same from a single call, but takes five times as long, because
// it also reads what only a start or an icon needs. That would be felt at each start of the
// program.

namespace platform {

namespace {

constexpr const char *group = G_KEY_FILE_DESKTOP_GROUP;

bool hasKey(GKeyFile *entry, const char *key)
{
    return g_key_file_has_key(entry, group, key, nullptr);
}

// GLib words a message for each missing key that it is asked for, which takes longer than to look.
bool isTrue(GKeyFile *entry, const char *key)
{
    return hasKey(entry, key) && g_key_file_get_boolean(entry, group, key, nullptr);
}

QByteArray text(GKeyFile *entry, const char *key)
{
    if (!hasKey(entry, key)) {
        return {};
    }
    const TextPointer value(g_key_file_get_string(entry, group, key, nullptr));
    return {value.get()};
}

QString localizedText(GKeyFile *entry, const char *key)
{
    const TextPointer value(g_key_file_get_locale_string(entry, group, key, nullptr, nullptr));
    return QString::fromUtf8(value.get());
}

bool listContains(GKeyFile *entry, const char *key, const QByteArray &wanted)
{
    const TextListPointer list(g_key_file_get_string_list(entry, group, key, nullptr, nullptr));
    return list && g_strv_contains(list.get(), wanted.constData());
}

bool isApplication(GKeyFile *entry)
{
    const TextPointer startGroup(g_key_file_get_start_group(entry));
    return g_strcmp0(startGroup.get(), group) == 0
           && text(entry, G_KEY_FILE_DESKTOP_KEY_TYPE) == G_KEY_FILE_DESKTOP_TYPE_APPLICATION;
}

// The first of the running desktop's names that either list holds decides.
bool isForThisDesktop(GKeyFile *entry)
{
    const bool isRestricted = hasKey(entry, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    if (!isRestricted && !hasKey(entry, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN)) {
        return true;
    }
    const QByteArrayList desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    for (const QByteArray &desktop : desktops) {
        if (desktop.isEmpty()) {
            continue;
        }
        if (listContains(entry, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, desktop)) {
            return true;
        }
        if (listContains(entry, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN, desktop)) {
            return false;
        }
    }
    return !isRestricted;
}

bool isInstalled(const QByteArray &program, const QByteArray &workingFolder)
{
    const bool isInWorkingFolder =
        !workingFolder.isEmpty() && program.contains('/') && !program.startsWith('/');
    const QByteArray place = isInWorkingFolder ? workingFolder + '/' + program : program;
    const TextPointer found(g_find_program_in_path(place.constData()));
    return found != nullptr;
}

bool isCommandInstalled(const QByteArray &commandLine, const QByteArray &workingFolder)
{
    char **words = nullptr;
    if (!g_shell_parse_argv(commandLine.constData(), nullptr, &words, nullptr)) {
        return false;
    }
    const TextListPointer list(words);
    return isInstalled(words[0], workingFolder);
}

bool canStart(GKeyFile *entry)
{
    const QByteArray workingFolder = text(entry, G_KEY_FILE_DESKTOP_KEY_PATH);
    const QByteArray condition = text(entry, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    if (!condition.isEmpty() && !isInstalled(condition, workingFolder)) {
        return false;
    }
    const QByteArray commandLine = text(entry, G_KEY_FILE_DESKTOP_KEY_EXEC);
    if (commandLine.isEmpty()) {
        return isTrue(entry, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE);
    }
    return isCommandInstalled(commandLine, workingFolder);
}

bool isListed(GKeyFile *entry)
{
    return isApplication(entry) && !isTrue(entry, G_KEY_FILE_DESKTOP_KEY_HIDDEN)
           && !isTrue(entry, G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY) && isForThisDesktop(entry)
           && canStart(entry);
}

QString displayName(GKeyFile *entry)
{
    const char *fullName = "X-GNOME-FullName";
    const QString name = localizedText(entry, G_KEY_FILE_DESKTOP_KEY_NAME);
    return hasKey(entry, fullName) && !name.isEmpty() ? localizedText(entry, fullName) : name;
}

bool isFolder(const QByteArray &path)
{
    struct stat status = {};
    return stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

// A dangling link counts: it overrides what it stands in front of, like any damaged file.
bool isFile(const QByteArray &path)
{
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && !isFolder(path);
}

// In a desktop-file id a dash stands for itself or for a slash. Links may lead in circles, so the
// search ends at a depth that no menu reaches.
bool holdsId(const QByteArray &folder, const QByteArray &id, int depth = 0)
{
    if (isFile(folder + '/' + id)) {
        return true;
    }
    for (auto dash = id.indexOf('-'); dash != -1 && depth < 5; dash = id.indexOf('-', dash + 1)) {
        const QByteArray name = id.left(dash);
        const bool isName = !name.isEmpty() && name != "." && name != "..";
        const QByteArray subfolder = folder + '/' + name;
        if (isName && isFolder(subfolder) && holdsId(subfolder, id.mid(dash + 1), depth + 1)) {
            return true;
        }
    }
    return false;
}

bool isOverridden(const QString &root, const QString &filePath)
{
    const QByteArray id = QFile::encodeName(filePath.mid(root.size() + 1)).replace('/', '-');
    const QStringList roots = startMenuRoots();
    const auto end = roots.begin() + qMax<qsizetype>(0, roots.indexOf(root));
    return std::any_of(roots.begin(), end, [&id](const QString &earlierRoot) {
        return holdsId(QFile::encodeName(earlierRoot), id);
    });
}

} // namespace

QStringList startMenuRoots()
{
    QStringList roots = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    std::transform(roots.begin(), roots.end(), roots.begin(), &QDir::cleanPath);
    roots.removeDuplicates();
    return roots;
}

QString startMenuPattern()
{
    return QStringLiteral("*.desktop");
}

std::optional<QString> startMenuName(const QString &root, const QString &filePath)
{
    if (isOverridden(root, filePath)) {
        return std::nullopt;
    }
    const KeyFilePointer entry = loadDesktopEntry(filePath);
    if (!entry || !isListed(entry.get())) {
        return std::nullopt;
    }
    const QString name = displayName(entry.get());
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

} // namespace platform
