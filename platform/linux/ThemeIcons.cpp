// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/ThemeIcons.h"

#include "platform/ImageFile.h"
#include "platform/QtVersion.h"
#include "platform/linux/FileName.h"
#include "platform/linux/KeyFile.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <memory>
#include <utility>

#include <dirent.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// A folder may have thousands of files, so reading it takes as long as some look-ups.
constexpr int lookupsBeforeReading = 16;

constexpr const char *themeGroup = "Icon Theme";

// The names of the icons in a folder, each once.
QSet<QByteArray> iconNamesIn(const QByteArray &path)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(opendir(path.constData()), &closedir);
    QSet<QByteArray> names;
    while (const dirent *entry = folder ? readdir(folder.get()) : nullptr) {
        const QByteArrayView file(entry->d_name);
        if (file.endsWith(".png") || file.endsWith(".svg")) {
            names.insert(file.chopped(4).toByteArray());
        }
    }
    return names;
}

// False for a symbolic link without a target, although a folder lists it.
bool exists(const QByteArray &path)
{
    return access(path.constData(), F_OK) == 0;
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
                return iconOfImageFile(path);
            }
        }
    }
    return {};
}

// For "audio-card-usb": itself, "audio-card", "audio".
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
    const QList<IconPicture> pictures = find(generalNames(name));
    return *m_icons.insert(name, pictures.isEmpty() ? iconOutsideOfThemes(name)
                                                    : QIcon(new ThemeIconEngine(pictures)));
}

QList<IconPicture> ThemeIcons::find(const QStringList &names)
{
    if (m_themes.isEmpty()) {
        QStringList added;
        addThemes(QIcon::themeName().isEmpty() ? u"hicolor"_s : QIcon::themeName(), added);
    }
    const QList<QStringList> searches = qtversion::iconSearches(names);
    for (const QStringList &search : searches) {
        for (Theme &theme : m_themes) {
            for (const QString &name : search) {
                QList<IconPicture> pictures = theme.find(encodedName(name));
                if (!pictures.isEmpty()) {
                    return pictures;
                }
            }
        }
    }
    return {};
}

void ThemeIcons::addThemes(const QString &name, QStringList &added)
{
    added.append(name);
    const Theme &theme = m_themes.emplaceBack(name);
    const QStringList parents = theme.parents();
    for (const QString &parent : parents) {
        if (!added.contains(parent)) {
            addThemes(parent, added);
        }
    }
}

// A theme without parents falls back to the fallback theme, and every theme at last to hicolor.
ThemeIcons::Theme::Theme(const QString &name)
{
    QString index;
    for (const QString &path : QIcon::themeSearchPaths()) {
        const QString file = path + u'/' + name + "/index.theme"_L1;
        if (index.isEmpty() && QFileInfo::exists(file)) {
            index = file;
        }
    }
    if (!index.isEmpty()) {
        addFolders(index);
    }
    if (m_parents.isEmpty() && !QIcon::fallbackThemeName().isEmpty()) {
        m_parents.append(QIcon::fallbackThemeName());
    }
    if (!m_parents.contains(u"hicolor"_s)) {
        m_parents.append(u"hicolor"_s);
    }
}

// The index may be in one folder of the theme's name and the icons in several.
void ThemeIcons::Theme::addFolders(const QString &index)
{
    const KeyFilePointer keys(g_key_file_new());
    readKeyFile(keys.get(), index);
    m_parents = parentsOf(keys.get());
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
                m_folders.append({whole, sizes});
            }
        }
    }
}

QList<IconPicture> ThemeIcons::Theme::find(const QByteArray &name)
{
    if (!m_isRead && ++m_lookups > lookupsBeforeReading) {
        readFolders();
    }
    QList<IconPicture> pictures;
    if (m_isRead) {
        const QList<qsizetype> indices = m_foldersByName.value(name);
        for (const qsizetype index : indices) {
            addPicture(m_folders.at(index), name, pictures);
        }
    } else {
        for (const Folder &folder : std::as_const(m_folders)) {
            addPicture(folder, name, pictures);
        }
    }
    return pictures;
}

void ThemeIcons::Theme::readFolders()
{
    for (qsizetype index = 0; index < m_folders.size(); ++index) {
        const QSet<QByteArray> names = iconNamesIn(m_folders.at(index).path);
        for (const QByteArray &name : names) {
            m_foldersByName[name].append(index);
        }
    }
    m_isRead = true;
}

void ThemeIcons::Theme::addPicture(const Folder &folder, const QByteArray &name,
                                   QList<IconPicture> &pictures)
{
    const QByteArray file = folder.path + '/' + name;
    // Of equally suitable pictures, Qt takes the bitmap of the last folder.
    if (exists(file + ".png")) {
        pictures.prepend({decodedName(file + ".png"), folder.sizes});
    } else if (exists(file + ".svg")) {
        pictures.append({decodedName(file + ".svg"), folder.sizes});
    }
}

} // namespace platform
