// SPDX-License-Identifier: GPL-3.0-or-later
#include "security/HostileNames.h"

#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "platform/UpdateScript.h"
#include "plugins/DirectoryPlugin.h"
#include "plugins/FilePlugin.h"
#include "plugins/OpenedFiles.h"
#include "security/World.h"
#include "settings/SearchEngine.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "tasks/Task.h"
#include "tasks/TaskRepository.h"
#include "tasks/TaskService.h"
#include "ui/VisibleText.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTest>
#include <QUrlQuery>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Replaces the browser.
class OpenedAddresses : public QObject
{
    Q_OBJECT

public:
    OpenedAddresses() { QDesktopServices::setUrlHandler(u"https"_s, this, "open"); }
    ~OpenedAddresses() override { QDesktopServices::unsetUrlHandler(u"https"_s); }
    Q_DISABLE_COPY_MOVE(OpenedAddresses)

    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl &url) { urls.append(url); }
};

QString folder()
{
    return testhome::path() + "/names"_L1;
}

// The names that files can have on this system.
QStringList fileNames()
{
    QStringList names = hostileNames();
    names.removeIf([](const QString &name) { return !names::isFileName(name); });
    return names;
}

// What the rows show of them.
QStringList titles(const QVariantList &records)
{
    QStringList texts;
    for (const QVariant &record : records) {
        texts.append(recordTitle(record.toMap()));
    }
    return texts;
}

QVariantMap recordOf(const QVariantList &records, const QString &data)
{
    const auto found =
        std::find_if(records.begin(), records.end(), [&data](const QVariant &record) {
            return actionData(recordAction(record.toMap())) == data;
        });
    return found == records.end() ? QVariantMap() : found->toMap();
}

} // namespace

/// What has such a name is shown, opened, stored and started like anything else, and nothing else
/// is started.
class tst_HostileNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void areTwoHundred();
    void areShownWithoutWhatHidesAPart();
    void arePinned();
    void areListedAndOpenedByDirectories();
    void areFoundAndOpenedByFiles();
    void areTasks();
    void areSearchedInTheWeb();
    void areStartedFromTheMenu();
    void areFoldersOfAnUpdate();
};

void tst_HostileNames::init()
{
    // The file index has a search path of its own.
    static const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", searchPath);
    testhome::reset();
    QVERIFY(QDir().mkpath(folder()));
    QDir::setCurrent(folder());
}

// Checks after every case that no name has run its command.
void tst_HostileNames::cleanup()
{
    QDir::setCurrent(QDir::rootPath());
    QDirIterator files(testhome::path(), QDir::AllEntries | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        QVERIFY2(files.fileName() != "canary"_L1, qPrintable(files.filePath()));
    }
}

void tst_HostileNames::areTwoHundred()
{
    const QStringList all = hostileNames();
    QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), 200);
    QVERIFY2(fileNames().size() >= names::leastFileNames,
             qPrintable(QString::number(fileNames().size())));
}

void tst_HostileNames::areShownWithoutWhatHidesAPart()
{
    const QStringList all = hostileNames();
    for (const QString &name : all) {
        const QString shown = visibleText(name);
        for (const char16_t hiding : u"\n\u202e\u2066\u2069"_s.toStdU16String()) {
            QVERIFY2(!shown.contains(hiding), qPrintable(name));
        }
    }
}

void tst_HostileNames::arePinned()
{
    const QStringList all = hostileNames();
    {
        AppLauncher launcher;
        for (const QString &name : all) {
            // Any address but that of a real file, whose icon would be drawn 200 times.
            QVERIFY2(launcher.pinApp(folder() + "/missing/"_L1 + name, name, u"icon.png"_s),
                     qPrintable(name));
        }
    }
    AppLauncher launcher;
    const QVariantList pins = launcher.pinnedApps().mid(2); // behind those of the first start
    QCOMPARE(titles(pins), all);
    for (const QString &name : all) {
        QVERIFY2(launcher.isPinned(folder() + "/missing/"_L1 + name), qPrintable(name));
        QVERIFY2(!launcher.launch(folder() + "/missing/"_L1 + name), qPrintable(name));
        QVERIFY2(launcher.unpinApp(folder() + "/missing/"_L1 + name), qPrintable(name));
    }
}

void tst_HostileNames::areListedAndOpenedByDirectories()
{
    const QStringList all = fileNames();
    for (const QString &name : all) {
        testhome::writeFile("names/"_L1 + name, {});
    }
    DirectoryPlugin plugin;
    const QVariantList records = plugin.query(folder());
    const QStringList listed = titles(records).mid(1); // behind the folder itself
    QCOMPARE(QSet<QString>(listed.begin(), listed.end()), QSet<QString>(all.begin(), all.end()));
    const OpenedFiles opened;
    for (const QString &name : all) {
        const QString path = folder() + u'/' + name;
        const QVariantMap record = recordOf(records, path);
        QCOMPARE(recordTitle(record), name);
        QVERIFY2(plugin.execute(recordAction(record)), qPrintable(name));
        QVERIFY2(names::isSameFile(opened.paths.constLast(), path),
                 qPrintable(opened.paths.constLast()));
    }
    QCOMPARE(opened.paths.size(), all.size());

    // Typed after the command, these name no folder, so the home folder is listed.
    const QVariantList home = plugin.query({});
    const QStringList some = names::startable(all);
    for (const QString &name : some) {
        QCOMPARE(plugin.query(folder() + "/missing/"_L1 + name), home);
    }
}

void tst_HostileNames::areFoundAndOpenedByFiles()
{
    const QStringList all = fileNames();
    QStringList paths;
    for (const QString &name : all) {
        paths.append(testhome::writeFile("names/"_L1 + name, {}));
    }
    names::installIndex(paths);
    FilePlugin plugin(nullptr);
    const OpenedFiles opened;
    const QStringList some = names::startable(all);
    for (const QString &name : some) {
        const QString path = names::nativePath(folder() + u'/' + name);
        const QVariantList records = plugin.query(name);
        // Each word with * or ? is a pattern for the whole name, so a name of several words does
        // not find itself.
        if (name.contains(u'*') || name.contains(u'?')) {
            continue;
        }
        const QVariantMap record = recordOf(records, path);
        QCOMPARE(recordTitle(record), name);
        QVERIFY2(plugin.execute(recordAction(record)), qPrintable(name));
        QVERIFY2(names::isSameFile(opened.paths.constLast(), path),
                 qPrintable(opened.paths.constLast()));
    }
}

void tst_HostileNames::areTasks()
{
    const QStringList all = hostileNames();
    QStringList ids;
    {
        const TaskService service;
        // The file is written at each change, so add most at once.
        QList<Task> tasks;
        for (const QString &name : all) {
            Task task;
            task.id = QString::number(ids.size());
            task.title = name;
            ids.append(task.id);
            tasks.append(task);
        }
        TaskService writer;
        writer.restoreTasks(tasks);
        for (const QString &name : all.mid(0, 20)) {
            const QString id = writer.createTask(name);
            QCOMPARE(writer.repository()->task(id).title, name.trimmed());
        }
    }
    const TaskService service;
    for (const QString &id : std::as_const(ids)) {
        QCOMPARE(service.repository()->task(id).title, all.at(id.toInt()));
    }
}

void tst_HostileNames::areSearchedInTheWeb()
{
    PluginManager manager;
    const OpenedAddresses opened;
    const QStringList all = hostileNames();
    for (const QString &name : all) {
        for (const SearchEngine &engine : searchEngines) {
            const QString url = webSearchUrl(engine.name, name);
            QVERIFY(manager.executeAction(makeAction(actiontype::openUrl, url)));
            const QUrl &address = opened.urls.constLast();
            QCOMPARE(address.host(), QUrl(engine.query).host());
            QCOMPARE(address.path(), QUrl(engine.query).path());
            const auto items = QUrlQuery(address).queryItems(QUrl::FullyDecoded);
            QCOMPARE(items.size(), 1);
            QCOMPARE(items.first().second, name);
            QVERIFY(!address.hasFragment());
        }
    }
}

void tst_HostileNames::areStartedFromTheMenu()
{
    const QStringList all = names::startable(fileNames());
    QStringList links;
    for (const QString &name : all) {
        links.append(names::installLink(name));
    }
    AppLauncher launcher;
    const QVariantList records = launcher.search({});
    QStringList found;
    for (const QVariant &record : records) {
        if (!links.contains(recordPath(record.toMap()))) {
            continue;
        }
        found.append(recordTitle(record.toMap()));
        QVERIFY2(launcher.launch(recordPath(record.toMap())), qPrintable(found.constLast()));
    }
    QCOMPARE(QSet<QString>(found.begin(), found.end()), QSet<QString>(all.begin(), all.end()));
    for (const QString &name : all) {
        QTRY_VERIFY2_WITH_TIMEOUT(names::isStarted(name), qPrintable(name), 120000);
    }
    QCOMPARE(names::startCount(), all.size());
}

// The names are folders of the program and of the download. Several scripts run at a time, since
// each waits two seconds.
void tst_HostileNames::areFoldersOfAnUpdate()
{
    const QStringList all = names::updatable(fileNames());
    for (qsizetype begin = 0; begin < all.size(); begin += names::updatesAtATime) {
        const QStringList batch = all.mid(begin, names::updatesAtATime);
        for (const QString &name : batch) {
            const QString place = "names/"_L1 + name;
            const QString program = testhome::writeFile(place + u'/' + name + ".exe"_L1, "old");
            QVERIFY(QFile::setPermissions(program,
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
            const QString download = testhome::writeFile(place + "/new"_L1, names::newProgram());
            QFile script(testhome::writeFile(place + "/a script.bat"_L1, {}));
            QVERIFY(script.open(QIODevice::WriteOnly | QIODevice::Text));
            script.write(platform::updateScript(download, program).toUtf8());
            script.close();
            platform::startUpdateScript(script.fileName());
        }
        for (const QString &name : batch) {
            const QString place = folder() + u'/' + name;
            QTRY_VERIFY2_WITH_TIMEOUT(names::isUpdated(place + u'/' + name + ".exe"_L1),
                                      qPrintable(name), 120000);
        }
    }
}

VASKEL_TEST(tst_HostileNames, QApplication)
#include "tst_HostileNames.moc"
