// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/FilePlugin.h"

#include "launcher/IconFolder.h"
#include "platform/FileIndex.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;
namespace fileindex = platform::fileindex;

namespace {

constexpr unsigned maximumResults = 50;

} // namespace

FilePlugin::FilePlugin(QObject *parent)
    : IPlugin(parent)
    , m_cacheDir(makeIconFolder())
{
}

QString FilePlugin::command() const
{
    return u"file"_s;
}

QString FilePlugin::description() const
{
    return tr("File search (Everything)");
}

QVariantList FilePlugin::query(const QString &args)
{
    const QString index = fileindex::name();
    if (index.isEmpty()) {
        return {inertRow(tr("File search is only available on Windows"),
                         tr("Everything SDK only supports Windows"))};
    }
    if (args.trimmed().isEmpty()) {
        return {
            inertRow(tr("Enter a filename to search"),
                     tr("Powered by Everything for fast search").replace("Everything"_L1, index))};
    }
    return search(args);
}

bool FilePlugin::execute(const QVariantMap &action)
{
    const QString data = action.value(u"data"_s).toString();
    return !data.isEmpty() && action.value(u"type"_s).toString() == "openFile"_L1
           && QDesktopServices::openUrl(QUrl::fromLocalFile(data));
}

QVariantList FilePlugin::search(const QString &args)
{
    const fileindex::Answer answer = fileindex::search(args, maximumResults);
    if (answer.error == fileindex::serviceUnreachable) {
        return {inertRow(tr("Everything service is not running"),
                         tr("Please start Everything before using file search"))};
    }
    if (answer.error) {
        return {inertRow(tr("Search failed"), tr("Error code: ") + QString::number(*answer.error))};
    }
    if (answer.paths.isEmpty()) {
        return {inertRow(tr("No files found"), args)};
    }
    return rows(answer.paths);
}

QVariantList FilePlugin::rows(const QStringList &paths)
{
    m_cacheDir = makeIconFolder(); // the temporary folder may have been cleaned up meanwhile
    QVariantList records;
    for (const QString &path : paths) {
        if (path.isEmpty()) {
            continue;
        }
        const QFileInfo file(path);
        records.append(QVariantMap{
            {u"title"_s, file.fileName()},
            {u"subtitle"_s, file.absolutePath()},
            {u"icon"_s, fileIcon(path)},
            {u"action"_s,
             QVariantMap{{u"type"_s, u"openFile"_s}, {u"data"_s, path}, {u"plugin"_s, command()}}},
        });
    }
    return records;
}

QVariantMap FilePlugin::inertRow(const QString &title, const QString &subtitle) const
{
    return {{u"title"_s, title},
            {u"subtitle"_s, subtitle},
            {u"icon"_s, QString()},
            {u"action"_s, QVariantMap{{u"type"_s, u"none"_s}, {u"plugin"_s, command()}}}};
}

QString FilePlugin::fileIcon(const QString &path) const
{
    if (m_cacheDir.isEmpty()) {
        return {};
    }
    QString target = m_cacheDir + u'/' + iconKey(path) + ".png"_L1;
    if (QFile::exists(target)) {
        return target;
    }
    const QPixmap pixmap = filePixmap(QFileInfo(path), QFileIconProvider());
    return saveScaledIcon(pixmap, target) ? target : QString();
}
