// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/DirectoryPlugin.h"

#include "launcher/IconFolder.h"
#include "platform/Folder.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QVariantMap record(const QString &title, const QString &subtitle, const QString &icon,
                   const QVariantMap &action)
{
    return {
        {u"title"_s, title}, {u"subtitle"_s, subtitle}, {u"icon"_s, icon}, {u"action"_s, action}};
}

QString entryIcon(const QFileInfo &entry, const QString &iconFolder,
                  const QFileIconProvider &provider)
{
    if (iconFolder.isEmpty()) {
        return {};
    }
    QString target = iconFolder + "/dir_"_L1 + iconKey(entry.absoluteFilePath()) + ".png"_L1;
    if (QFile::exists(target)) {
        return target;
    }
    const QPixmap pixmap = filePixmap(entry, provider);
    return !pixmap.isNull() && saveIcon(pixmap, target) ? target : QString();
}

} // namespace

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
    const auto action = [this](const QString &type, const QString &path) {
        return QVariantMap{{u"type"_s, type}, {u"data"_s, path}, {u"plugin"_s, command()}};
    };
    const QString path = resolvePath(args);
    const QDir dir(path.isEmpty() ? QDir::homePath() : path);
    if (!dir.exists()) {
        return {record(tr("Directory does not exist"), args, QString(),
                       {{u"type"_s, u"none"_s}, {u"plugin"_s, command()}})};
    }

    QVariantList records = {record(tr("Open ") + dir.dirName(), dir.absolutePath(), QString(),
                                   action(u"openFolder"_s, dir.absolutePath()))};
    const QFileIconProvider provider;
    const QString iconFolder = makeIconFolder();
    const QFileInfoList entries =
        dir.entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::DirsFirst);
    for (const QFileInfo &entry : entries) {
        const bool isFolder = entry.isDir();
        records.append(
            record(entry.fileName(), isFolder ? tr("Folder") : entry.suffix().toUpper(),
                   entryIcon(entry, iconFolder, provider),
                   action(isFolder ? u"navigate"_s : u"openFile"_s, entry.absoluteFilePath())));
    }
    return records;
}

bool DirectoryPlugin::execute(const QVariantMap &action)
{
    const QString type = action.value(u"type"_s).toString();
    const QString data = action.value(u"data"_s).toString();
    if (data.isEmpty()) {
        return false;
    }
    if (type == "openFolder"_L1 || type == "navigate"_L1) {
        return platform::openFolder(data);
    }
    return type == "openFile"_L1 && QDesktopServices::openUrl(QUrl::fromLocalFile(data));
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
