// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/ThemeIcons.h"

#include "platform/QtVersion.h"
#include "platform/linux/FileName.h"
#include "platform/linux/KeyFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// A folder may have thousands of files, so reading it takes as long as some look-ups.
constexpr int lookupsBeforeReading = 32;

constexpr const char *themeGroup = "Icon Theme";

QSet<QByteArray> namesIn(const QByteArray &path)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(opendir(path.constData()), &closedir);
    QSet<QByteArray> names;
    while (const dirent *entry = folder ? readdir(folder.get()) : nullptr) {
        names.insert(entry->d_name);
    }
    return names;
}

bool isFolder(const QByteArray &path)
{
    struct stat status = {};
    return stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

int number(GKeyFile *index, const char *group, const char *key, int otherwise)
{
    return g_key_file_has_key(index, group, key, nullptr)
               ? g_key_file_get_integer(index, group, key, nullptr)
               : otherwise;
}

IconSizes sizesOf(GKeyFile *index, const char *group)
{
    IconSizes sizes;
    const TextPointer type(g_key_file_get_string(index, group, "Type", nullptr));
    const QByteArrayView kind(type.get());
    sizes.kind = kind == "Fixed"      ? IconSizes::Fixed
                 : kind == "Scalable" ? IconSizes::Scalable
                                      : IconSizes::Threshold;
    sizes.size = number(index, group, "Size", 0);
    sizes.minimum = number(index, group, "MinSize", sizes.size);
    sizes.maximum = number(index, group, "MaxSize", sizes.size);
    sizes.threshold = number(index, group, "Threshold", 2);
    sizes.scale = number(index, group, "Scale", 1);
    return sizes;
}

QStringList parentsOf(GKeyFile *index)
{
    const TextPointer inherits(g_key_file_get_string(index, themeGroup, "Inherits", nullptr));
    QStringList parents =
        QString::fromUtf8(inherits.get()).replace(u';', u',').split(u',', Qt::SkipEmptyParts);
    std::transform(parents.begin(), parents.end(), parents.begin(),
                   [](const QString &name) { return name.trimmed(); });
    return parents;
}

QIcon iconOutsideOfThemes(const QString &name)
{
    for (const QString &folder : QIcon::fallbackSearchPaths()) {
        for (const auto suffix : {".png"_L1, ".xpm"_L1, ".svg"_L1}) {
            const QString path = folder + u'/' + name + suffix;
            if (QFileInfo::exists(path)) {
                return QIcon(path);
            }
        }
    }
    return {};
}

// Of "audio-card-usb", that and "audio-card" and "audio".
QStringList generalNames(const QString &name)
{
    QStringList names;
    for (QString general = name; !general.isEmpty();
         general.truncate(std::max<qsizetype>(general.lastIndexOf(u'-'), 0))) {
        names.append(general);
    }
    return names;
}

} // namespace

QIcon ThemeIcons::icon(const QString &name)
{
    const auto known = m_icons.constFind(name);
    if (known != m_icons.cend()) {
        return *known;
    }
    const QString themeName = QIcon::themeName();
    const QList<QStringList> searches = qtversion::iconSearches(generalNames(name));
    QList<IconPicture> pictures;
    for (const QStringList &names : searches) {
        QStringList visited;
        pictures = find(themeName.isEmpty() ? u"hicolor"_s : themeName, names, visited);
        if (!pictures.isEmpty()) {
            break;
        }
    }
    return *m_icons.insert(name, pictures.isEmpty() ? iconOutsideOfThemes(name)
                                                    : QIcon(new ThemeIconEngine(pictures)));
}

QList<IconPicture> ThemeIcons::find(const QString &themeName, const QStringList &names,
                                    QStringList &visited)
{
    visited.append(themeName);
    Theme &current = theme(themeName);
    for (const QString &name : names) {
        const QByteArray fileName = encodedName(name);
        QList<IconPicture> pictures;
        for (Folder &folder : current.folders) {
            // Of equally suitable pictures, Qt takes the bitmap of the last folder.
            if (folder.contains(fileName + ".png")) {
                pictures.prepend(
                    {decodedName(folder.path + '/' + fileName + ".png"), folder.sizes});
            } else if (folder.contains(fileName + ".svg")) {
                pictures.append({decodedName(folder.path + '/' + fileName + ".svg"), folder.sizes});
            }
        }
        if (!pictures.isEmpty()) {
            return pictures;
        }
    }
    const QStringList parents = current.parents;
    for (const QString &parent : parents) {
        if (visited.contains(parent)) {
            continue;
        }
        QList<IconPicture> pictures = find(parent, names, visited);
        if (!pictures.isEmpty()) {
            return pictures;
        }
    }
    return {};
}

ThemeIcons::Theme &ThemeIcons::theme(const QString &name)
{
    const auto known = m_themes.find(name);
    return known != m_themes.end() ? *known : *m_themes.insert(name, read(name));
}

// Every theme falls back to hicolor; one that names no parent, to the fallback theme before.
ThemeIcons::Theme ThemeIcons::read(const QString &name)
{
    Theme theme;
    QString index;
    for (const QString &path : QIcon::themeSearchPaths()) {
        const QString file = path + u'/' + name + "/index.theme"_L1;
        if (index.isEmpty() && QFileInfo::exists(file)) {
            index = file;
        }
    }
    if (!index.isEmpty()) {
        addFolders(theme, index);
    }
    if (theme.parents.isEmpty() && !QIcon::fallbackThemeName().isEmpty()) {
        theme.parents.append(QIcon::fallbackThemeName());
    }
    if (!theme.parents.contains(u"hicolor"_s)) {
        theme.parents.append(u"hicolor"_s);
    }
    return theme;
}

// The index may be in one folder of the theme's name and the icons in several.
void ThemeIcons::addFolders(Theme &theme, const QString &index)
{
    const KeyFilePointer keys(g_key_file_new());
    readKeyFile(keys.get(), index);
    theme.parents = parentsOf(keys.get());
    const TextListPointer groups(g_key_file_get_groups(keys.get(), nullptr));
    QByteArrayList subfolders;
    for (char **group = groups.get(); group && *group; ++group) {
        subfolders.append(*group);
    }
    std::sort(subfolders.begin(), subfolders.end()); // Qt's order
    const QString name = QFileInfo(QFileInfo(index).path()).fileName();
    for (const QString &path : QIcon::themeSearchPaths()) {
        const QByteArray folder = encodedName(path + u'/' + name);
        if (!isFolder(folder)) {
            continue;
        }
        for (const QByteArray &subfolder : std::as_const(subfolders)) {
            const QByteArray whole = folder + '/' + subfolder;
            const IconSizes sizes = sizesOf(keys.get(), subfolder.constData());
            if (sizes.size > 0 && isFolder(whole)) {
                theme.folders.append({whole, sizes});
            }
        }
    }
}

bool ThemeIcons::Folder::contains(const QByteArray &fileName)
{
    if (!names && ++lookups > lookupsBeforeReading) {
        names = namesIn(path);
    }
    // A symbolic link may have no target.
    return (!names || names->contains(fileName))
           && access((path + '/' + fileName).constData(), F_OK) == 0;
}

} // namespace platform
