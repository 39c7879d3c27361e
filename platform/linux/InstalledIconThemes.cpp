// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/InstalledIconThemes.h"

#include "platform/linux/KeyFile.h"

#include <QDir>
#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// Reads no further than the key, which is near the beginning: most of an index describes each of
// its hundreds of folders.
bool hasDirectories(const QString &indexFile)
{
    QFile file(indexFile);
    if (!openKeyFile(file)) {
        return false;
    }
    bool isInGroup = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith('[')) {
            isInGroup = line == "[Icon Theme]";
        } else if (isInGroup && line.left(line.indexOf('=')).trimmed() == "Directories") {
            return true;
        }
    }
    return false;
}

// Every theme falls back to hicolor anyway, and locolor has too few colours.
QStringList furtherThemes(const QStringList &searchPaths)
{
    QStringList names;
    for (const QString &path : searchPaths) {
        names += QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    }
    names.removeAll(u"hicolor"_s);
    names.removeAll(u"locolor"_s);
    return names;
}

} // namespace

// Cursor themes have an index as well, but no folders of icons.
bool isIconTheme(const QStringList &searchPaths, const QString &name)
{
    return std::any_of(searchPaths.begin(), searchPaths.end(), [&name](const QString &path) {
        return hasDirectories(path + u'/' + name + "/index.theme"_L1);
    });
}

QString richestIconTheme(const QStringList &searchPaths)
{
    QStringList names = {u"Papirus"_s, u"breeze"_s,        u"oxygen"_s,  u"elementary-xfce"_s,
                         u"Yaru"_s,    u"Humanity"_s,      u"Mint-X"_s,  u"mate"_s,
                         u"gnome"_s,   u"AdwaitaLegacy"_s, u"Adwaita"_s, u"Tango"_s,
                         u"nuoveXT2"_s};
    names += furtherThemes(searchPaths);
    const auto theme = std::find_if(names.begin(), names.end(), [&](const QString &name) {
        return isIconTheme(searchPaths, name);
    });
    return theme != names.end() ? *theme : QString();
}

} // namespace platform
