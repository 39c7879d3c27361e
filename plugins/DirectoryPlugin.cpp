// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/DirectoryPlugin.h"

#include "core/ResultRecord.h"
#include "launcher/IconCache.h"
#include "platform/File.h"
#include "platform/Folder.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

DirectoryPlugin::DirectoryPlugin(QObject *parent)
    : IPlugin(parent)
{
}

QString DirectoryPlugin::command() const
{
    return u"cd"_s;
}

QString DirectoryPlugin::description() const
{
    return tr("Directory browser and navigation");
}

QVariantList DirectoryPlugin::query(const QString &args)
{
    const QString path = resolvePath(args);
    const QDir dir(path.isEmpty() ? QDir::homePath() : path);
    if (!dir.exists()) {
        return {makeInertRecord(tr("Directory does not exist"), args, command())};
    }

    QVariantList records = {
        makeRecord(tr("Open ") + dir.dirName(), dir.absolutePath(), QString(),
                   makeAction(actiontype::openFolder, dir.absolutePath(), command()))};
    IconCache icons(makeIconFolder(), {.prefix = u"dir_"_s, .isScaled = false});
    const QFileInfoList entries =
        dir.entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::DirsFirst);
    for (const QFileInfo &entry : entries) {
        const bool isFolder = entry.isDir();
        records.append(makeRecord(entry.fileName(),
                                  isFolder ? tr("Folder") : entry.suffix().toUpper(),
                                  icons.iconFile(entry),
                                  makeAction(isFolder ? actiontype::navigate : actiontype::openFile,
                                             entry.absoluteFilePath(), command())));
    }
    return records;
}

bool DirectoryPlugin::execute(const QVariantMap &action)
{
    const QString type = actionType(action);
    const QString data = actionData(action);
    if (data.isEmpty()) {
        return false;
    }
    if (type == actiontype::openFolder || type == actiontype::navigate) {
        return platform::openFolder(data);
    }
    return type == actiontype::openFile && platform::openFile(data);
}

QString DirectoryPlugin::resolvePath(const QString &args) const
{
    QString path = args.trimmed();
    if (path.isEmpty()) {
        return QDir::homePath();
    }
    if (path.startsWith(u'~')) {
        path.replace(0, 1, QDir::homePath());
    }
    if (QDir(path).exists()) {
        return QDir(path).absolutePath();
    }
    const QDir home(QDir::homePath());
    return home.exists(path) ? home.absoluteFilePath(path) : QString();
}
