// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/FilePlugin.h"

#include "core/ResultRecord.h"
#include "core/RowsChanged.h"
#include "platform/File.h"
#include "platform/FileIndex.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;
namespace fileindex = platform::fileindex;

namespace {

constexpr unsigned maximumRecords = 50;

} // namespace

FilePlugin::FilePlugin(QObject *parent)
    : IPlugin(parent)
    , m_cacheDir(makeIconFolder())
{
}

FilePlugin::FilePlugin(RowsChanged *rowsChanged, QObject *parent)
    : FilePlugin(parent)
{
    fileindex::watch(this, [this, rowsChanged] { rowsChanged->report(command()); });
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
        return {inertRecord(tr("File search is only available on Windows"),
                            tr("Everything SDK only supports Windows"))};
    }
    if (args.trimmed().isEmpty()) {
        return {inertRecord(
            tr("Enter a filename to search"),
            tr("Powered by Everything for fast search").replace("Everything"_L1, index))};
    }
    return search(args);
}

QStringList FilePlugin::searchTexts(const QString &args) const
{
    return args.simplified().split(u' ');
}

bool FilePlugin::execute(const QVariantMap &action)
{
    const QString data = actionData(action);
    return !data.isEmpty() && actionType(action) == actiontype::openFile
           && platform::openFile(data);
}

QVariantList FilePlugin::search(const QString &args)
{
    const fileindex::Answer answer = fileindex::search(args, maximumRecords);
    if (answer.error == fileindex::serviceUnreachable) {
        return {inertRecord(tr("Everything service is not running"),
                            tr("Please start Everything before using file search"))};
    }
    if (answer.error) {
        return {
            inertRecord(tr("Search failed"), tr("Error code: ") + QString::number(*answer.error))};
    }
    if (answer.paths.isEmpty()) {
        return {inertRecord(tr("No files found"), args)};
    }
    return makeRecords(answer.paths);
}

QVariantList FilePlugin::makeRecords(const QStringList &paths)
{
    m_cacheDir = makeIconFolder(); // a cleanup may have removed it
    m_icons.emplace(m_cacheDir);
    QVariantList records;
    for (const QString &path : paths) {
        if (path.isEmpty()) {
            continue;
        }
        const QFileInfo file(path);
        records.append(makeRecord(file.fileName(), file.absolutePath(), fileIcon(path),
                                  makeAction(actiontype::openFile, path, command())));
    }
    return records;
}

QVariantMap FilePlugin::inertRecord(const QString &title, const QString &subtitle) const
{
    return makeInertRecord(title, subtitle, command());
}

QString FilePlugin::fileIcon(const QString &path)
{
    return m_icons->iconFile(path);
}
