// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/MenuFolder.h"

#include "platform/FolderEntries.h"
#include "platform/Link.h"

#include <QDir>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A name and its sort key, which is made once instead of at each comparison.
struct SortedName
{
    QString key;
    QString name;
};

QStringList sorted(QList<SortedName> names)
{
    std::sort(names.begin(), names.end(), [](const SortedName &left, const SortedName &right) {
        const int order = left.key.compare(right.key);
        return order != 0 ? order < 0 : left.name < right.name;
    });
    QStringList result;
    result.reserve(names.size());
    for (SortedName &name : names) {
        result.append(std::move(name.name));
    }
    return result;
}

} // namespace

MenuFolder readMenuFolder(const QString &path)
{
    const QList<platform::FolderEntry> entries = platform::folderEntries(path);
    QList<SortedName> links;
    QList<SortedName> subfolders;
    for (const platform::FolderEntry &entry : entries) {
        if (entry.isFolder) {
            subfolders.append({entry.name.toLower(), entry.name});
        } else if (platform::isLink(entry.name)) {
            links.append({entry.name.toLower(), entry.name});
        }
    }
    MenuFolder folder{sorted(std::move(links)), sorted(std::move(subfolders))};
    QString prefix = QDir(path).absolutePath();
    if (!prefix.endsWith(u'/')) {
        prefix += u'/';
    }
    for (QString &link : folder.links) {
        link.prepend(prefix);
    }
    return folder;
}
