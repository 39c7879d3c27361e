// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppLauncher.h"

#include "core/ResultRecord.h"
#include "launcher/AppSearch.h"
#include "launcher/IconCache.h"
#include "launcher/MenuFolder.h"
#include "platform/BuiltinPrograms.h"
#include "platform/FileReplacement.h"
#include "platform/Link.h"
#include "platform/PrivateFolder.h"
#include "platform/RegularFile.h"
#include "platform/StartMenu.h"

#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const IconRules iconRules{.asksShell = true};

} // namespace

/// What the entries of one scan share.
struct AppLauncher::Scan
{
    IconCache icons;
    QSet<QString> seenNames = {}; // one for all roots: the first of the same name is listed
};

AppLauncher::AppLauncher(QObject *parent)
    : QObject(parent)
    , m_iconCacheDir(makeIconFolder())
{
    Scan scan{IconCache(m_iconCacheDir, iconRules)};
    scan.icons.listFolder();
    loadBuiltinApps(&scan);
    scanStartMenu(&scan);
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
    if (platform::isLink(path)) {
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

void AppLauncher::loadBuiltinApps(Scan *scan)
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
        m_apps.append(
            AppEntry(name, info.path, info.description, scan->icons.iconFile(info.iconSource)));
    }
}

QString AppLauncher::startMenuText()
{
    return tr("Start Menu");
}

void AppLauncher::scanStartMenu(Scan *scan)
{
    const QStringList roots = platform::startMenuRoots();
    for (const QString &root : roots) {
        const QDir folder(root);
        if (!folder.exists()) {
            continue;
        }
        const QStringList subfolders = addPrograms(root, root, startMenuText(), scan);
        for (const QString &name : subfolders) {
            addPrograms(root, folder.absoluteFilePath(name),
                        QString(startMenuText() + " / "_L1 + name), scan);
        }
    }
}

QStringList AppLauncher::addPrograms(const QString &root, const QString &folder,
                                     const QString &description, Scan *scan)
{
    const MenuFolder menu = readMenuFolder(folder);
    const QHash<QString, QString> names = platform::startMenuNames(root, menu.links);
    const AppDescription shared(description);
    m_apps.reserve(m_apps.size() + menu.links.size());
    for (const QString &path : menu.links) {
        const auto name = names.constFind(path);
        if (name != names.cend() && !scan->seenNames.contains(*name)) {
            scan->seenNames.insert(*name);
            m_apps.emplaceBack(*name, path, shared, scan->icons.iconFile(path));
        }
    }
    return menu.subfolders;
}

QString AppLauncher::extractIcon(const QString &path) const
{
    return IconCache(m_iconCacheDir, iconRules).iconFile(path);
}

bool AppLauncher::loadPins()
{
    QFile file(pinsFilePath());
    if (!platform::openRegularFile(file)) {
        return false;
    }
    const std::optional<QList<PinnedApp>> pins = pinsFromJson(file.readAll());
    m_pinnedApps = pins.value_or(QList<PinnedApp>());
    return pins.has_value();
}

void AppLauncher::savePins() const
{
    const QString path = pinsFilePath();
    if (!platform::replaceFile(path, pinsToJson(m_pinnedApps))) {
        qWarning() << "Cannot write the pins:" << path;
    }
}

QString AppLauncher::pinsFilePath()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!platform::makePrivateFolder(folder)) {
        qWarning() << "Other users may be able to enter" << folder;
        QDir().mkpath(folder);
    }
    return folder + "/pins.json"_L1;
}
