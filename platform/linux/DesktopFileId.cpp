// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DesktopFileId.h"

#include "platform/linux/FileName.h"

#include <QFile>

#include <sys/stat.h>

namespace platform {

namespace {

// Symbolic links may form a cycle; no menu is this deep.
constexpr int maximumDepth = 5;

bool isFile(const QByteArray &path)
{
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && !isFolder(path);
}

// A dash of the id stands for a dash or for a slash.
QByteArray find(const QByteArray &folder, const QByteArray &id, int depth)
{
    if (QByteArray file = folder + '/' + id; isFile(file)) {
        return file;
    }
    for (auto dash = id.indexOf('-'); dash != -1 && depth < maximumDepth;
         dash = id.indexOf('-', dash + 1)) {
        const QByteArray name = id.left(dash);
        const QByteArray subfolder = folder + '/' + name;
        if (name.isEmpty() || name == "." || name == ".." || !isFolder(subfolder)) {
            continue;
        }
        if (QByteArray file = find(subfolder, id.mid(dash + 1), depth + 1); !file.isEmpty()) {
            return file;
        }
    }
    return {};
}

} // namespace

QString desktopFileId(const QString &root, const QString &filePath)
{
    return filePath.mid(root.size() + 1).replace(QLatin1Char('/'), QLatin1Char('-'));
}

QString fileOfId(const QString &root, const QString &id)
{
    return QFile::decodeName(find(QFile::encodeName(root), QFile::encodeName(id), 0));
}

} // namespace platform
