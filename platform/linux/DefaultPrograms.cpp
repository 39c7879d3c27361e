// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DefaultPrograms.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/DesktopFileId.h"
#include "platform/linux/KeyFile.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

// Not through GIO: its thread would watch these folders from then on, and the hidden program would
// wake up at each change of a setting.

namespace platform {

namespace {

QStringList mimeAppsLists()
{
    QStringList files;
    const QByteArrayList desktops = currentDesktops();
    const QStringList folders =
        QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation) + startMenuRoots();
    for (const QString &folder : folders) {
        for (const QByteArray &desktop : desktops) {
            files += folder + u'/' + QString::fromUtf8(desktop).toLower() + "-mimeapps.list"_L1;
        }
        files += folder + "/mimeapps.list"_L1;
    }
    return files;
}

QStringList installedPrograms(const QString &file, const char *group, const QByteArray &contentType)
{
    const KeyFilePointer lists(g_key_file_new());
    if (!readKeyFile(lists.get(), file)) {
        return {};
    }
    const TextListPointer ids(
        g_key_file_get_string_list(lists.get(), group, contentType.constData(), nullptr, nullptr));
    QStringList paths;
    for (char **id = ids.get(); id && *id; ++id) {
        paths += installedProgram(QString::fromUtf8(*id));
    }
    paths.removeAll(QString());
    return paths;
}

} // namespace

QStringList defaultPrograms(const QByteArray &contentType)
{
    QStringList paths;
    for (const QString &file : mimeAppsLists()) {
        paths += installedPrograms(file, "Default Applications", contentType);
    }
    return paths;
}

QStringList associatedPrograms(const QByteArray &contentType)
{
    QStringList paths;
    for (const QString &root : startMenuRoots()) {
        paths += installedPrograms(root + "/mimeinfo.cache"_L1, "MIME Cache", contentType);
    }
    return paths;
}

QString installedProgram(const QString &id, const QStringList &roots)
{
    for (const QString &root : roots) {
        const QString path = fileOfId(root, id);
        if (path.isEmpty()) {
            continue;
        }
        const std::optional<DesktopEntry> entry = DesktopEntry::load(path);
        return entry && entry->canStart() ? path : QString();
    }
    return {};
}

} // namespace platform
