// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppLauncher.h"

#include "core/ResultRecord.h"
#include "launcher/AppSearch.h"
#include "launcher/IconCache.h"
#include "platform/BuiltinPrograms.h"
#include "platform/Link.h"
#include "platform/PrivateFolder.h"
#include "platform/RegularFile.h"
#include "platform/StartMenu.h"

#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// The keys of the pins file; those of a record are independent of them.
constexpr auto pinNameKey = "name"_L1;
constexpr auto pinPathKey = "path"_L1;
constexpr auto pinIconKey = "iconPath"_L1;

bool isLink(const QString &path)
{
    const QString suffix = platform::linkSuffix();
    return path.endsWith(suffix, Qt::CaseInsensitive)
           && QStringView(path).chopped(suffix.size()).endsWith(u'.');
}

} // namespace

AppLauncher::AppLauncher(QObject *parent)
    : QObject(parent)
    , m_iconCacheDir(makeIconFolder())
{
    loadBuiltinApps();
    scanStartMenu();
    m_isFirstStart = !QFile::exists(pinsFilePath());
    if (!loadPins()) {
        using platform::BuiltinProgram;
        pinApp(platform::builtinProgram(BuiltinProgram::Calculator).path, tr("Calculator"), {});
        pinApp(platform::builtinProgram(BuiltinProgram::TaskManager).path, tr("Task Manager"), {});
    }
}

QVariantList AppLauncher::search(const QString &query) const
{
    return searchApps(m_apps, query);
}

bool AppLauncher::launch(const QString &path)
{
    if (path.isEmpty()) {
        return false;
    }
    qDebug() << "Launching:" << path;

    if (path.startsWith("http://"_L1) || path.startsWith("https://"_L1)
        || path.startsWith("ms-settings:"_L1)) {
        return QDesktopServices::openUrl(QUrl(path));
    }
    if (isLink(path)) {
        return platform::openLink(path);
    }

    QProcess process;
    process.setProgram(platform::programFile(path));
    return process.startDetached();
}

bool AppLauncher::pinApp(const QString &path, const QString &name, const QString &iconPath)
{
    if (path.isEmpty() || isPinned(path)) {
        return false;
    }
    m_pinnedApps.append({name, path, iconPath.isEmpty() ? extractIcon(path) : iconPath});
    savePins();
    Q_EMIT pinsChanged();
    return true;
}

bool AppLauncher::unpinApp(const QString &path)
{
    const auto pin = std::find_if(m_pinnedApps.cbegin(), m_pinnedApps.cend(),
                                  [&path](const PinnedApp &app) { return app.path == path; });
    if (pin == m_pinnedApps.cend()) {
        return false;
    }
    m_pinnedApps.erase(pin);
    savePins();
    Q_EMIT pinsChanged();
    return true;
}

bool AppLauncher::isPinned(const QString &path) const
{
    return std::any_of(m_pinnedApps.cbegin(), m_pinnedApps.cend(),
                       [&path](const PinnedApp &app) { return app.path == path; });
}

QVariantList AppLauncher::pinnedApps() const
{
    QVariantList records;
    for (const PinnedApp &app : m_pinnedApps) {
        records.append(makeProgramRecord(app.name, app.path, app.iconPath));
    }
    return records;
}

void AppLauncher::loadBuiltinApps()
{
    using platform::BuiltinProgram;
    const std::pair<BuiltinProgram, QString> programs[] = {
        {BuiltinProgram::Notepad, tr("Notepad")},
        {BuiltinProgram::Calculator, tr("Calculator")},
        {BuiltinProgram::Paint, tr("Paint")},
        {BuiltinProgram::CommandPrompt, tr("Command Prompt")},
        {BuiltinProgram::FileExplorer, tr("File Explorer")},
        {BuiltinProgram::TaskManager, tr("Task Manager")},
        {BuiltinProgram::Settings, tr("Settings")},
        {BuiltinProgram::Browser, tr("Browser")},
    };
    for (const auto &[program, name] : programs) {
        const platform::ProgramInfo info = platform::builtinProgram(program);
        m_apps.append(AppEntry(name, info.path, info.description, extractIcon(info.iconSource)));
    }
}

QString AppLauncher::startMenuText()
{
    return tr("Start Menu");
}

void AppLauncher::scanStartMenu()
{
    // One set for all roots: of files with the same name only the first is listed.
    QSet<QString> seenNames;
    const QStringList roots = platform::startMenuRoots();
    for (const QString &root : roots) {
        const QDir folder(root);
        if (!folder.exists()) {
            continue;
        }
        const QStringList subfolders = addPrograms(root, folder, startMenuText(), &seenNames);
        for (const QString &name : subfolders) {
            addPrograms(root, QDir(folder.absoluteFilePath(name)),
                        QString(startMenuText() + " / "_L1 + name), &seenNames);
        }
    }
}

QStringList AppLauncher::addPrograms(const QString &root, const QDir &folder,
                                     const QString &description, QSet<QString> *seenNames)
{
    // Read the folder once for files and subfolders. A name filter would be slower, since it
    // matches a regular expression for each name. NoSort keeps the order of QDir: by name, ignoring
    // case.
    const QFileInfoList entries =
        folder.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    QStringList subfolders;
    QStringList paths;
    for (const QFileInfo &entry : entries) {
        const QString name = entry.fileName();
        if (entry.isDir()) {
            subfolders.append(name);
        } else if (isLink(name)) {
            paths.append(folder.absoluteFilePath(name));
        }
    }
    const QHash<QString, QString> names = platform::startMenuNames(root, paths);
    for (const QString &path : std::as_const(paths)) {
        const auto name = names.constFind(path);
        if (name != names.cend() && !seenNames->contains(*name)) {
            seenNames->insert(*name);
            m_apps.append(AppEntry(*name, path, description, extractIcon(path)));
        }
    }
    return subfolders;
}

QString AppLauncher::extractIcon(const QString &path) const
{
    return IconCache(m_iconCacheDir, {.asksShell = true}).iconFile(path);
}

bool AppLauncher::loadPins()
{
    QFile file(pinsFilePath());
    if (!platform::openRegularFile(file)) {
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isArray()) {
        return false;
    }
    const QJsonArray pins = document.array();
    for (const QJsonValueConstRef value : pins) {
        const QJsonObject pin = value.toObject();
        m_pinnedApps.append({pin.value(pinNameKey).toString(), pin.value(pinPathKey).toString(),
                             pin.value(pinIconKey).toString()});
    }
    return true;
}

void AppLauncher::savePins() const
{
    QJsonArray pins;
    for (const PinnedApp &app : m_pinnedApps) {
        pins.append(QJsonObject{
            {pinNameKey, app.name},
            {pinPathKey, app.path},
            {pinIconKey, app.iconPath},
        });
    }
    QSaveFile file(pinsFilePath());
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    if (file.write(QJsonDocument(pins).toJson(QJsonDocument::Compact)) >= 0) {
        file.commit();
    }
}

QString AppLauncher::pinsFilePath()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!platform::makePrivateFolder(folder)) {
        QDir().mkpath(folder);
    }
    return folder + "/pins.json"_L1;
}
