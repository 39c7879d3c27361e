// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CommandQuery.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "launcher/LauncherTest.h"
#include "plugins/AppPlugin.h"
#include "plugins/FilePlugin.h"
#include "settings/Settings.h"
#include "support/TestProgram.h"

#include <QLoggingCategory>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Has a page, records its queries and answers each with one record, but "nothing" with none.
class RecordingPlugin : public IPlugin
{
    Q_OBJECT

public:
    using IPlugin::IPlugin;

    QString command() const override { return u"todo"_s; }
    QStringList aliases() const override { return {u"tasks"_s}; }
    QString description() const override { return u"Tasks"_s; }
    bool hasView() const override { return true; }
    bool execute(const QVariantMap &) override { return false; }

    QVariantList query(const QString &args) override
    {
        queries.append(args);
        return args == u"nothing"_s ? QVariantList() : QVariantList{record};
    }

    const QVariantMap record = {{u"title"_s, u"row"_s}};
    QStringList queries;
};

/// A query with the real services, the plugin and the built-in programs.
struct Query
{
    Query()
        : plugin(new RecordingPlugin(&plugins))
    {
        plugins.setSettings(&settings);
        plugins.registerPlugin(plugin);
    }

    Settings settings;
    PluginManager plugins;
    RecordingPlugin *plugin;
    AppLauncher launcher;
    CommandQuery query{&plugins, &launcher, &settings};
};

QStringList titles(const QVariantList &records)
{
    QStringList titles;
    for (const QVariant &record : records) {
        titles.append(recordTitle(record.toMap()));
    }
    return titles;
}

} // namespace

class tst_CommandQuery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsByWhichTextsItFinds_data();
    void knowsByWhichTextsItFinds();
    void initTestCase() { QLoggingCategory::setFilterRules(u"default.debug=false"_s); }
    void init();

    void hasNoCommandAtFirst();
    void forgetsTheEarlierText();
    void splitsTheText_data();
    void splitsTheText();
    void findsTheRecords_data();
    void findsTheRecords();
    void findsAllApplicationsForBlankText();
    void opensAtOnce_data();
    void opensAtOnce();
};

void tst_CommandQuery::init()
{
    launchertest::reset();
}

void tst_CommandQuery::hasNoCommandAtFirst()
{
    const Query q;
    QVERIFY(!q.query.isCommand());
    QCOMPARE(q.query.command(), QString());
    QCOMPARE(q.query.arguments(), QString());
    QCOMPARE(q.query.statusText(), QString());
    QVERIFY(!q.query.opensAtOnce());
}

void tst_CommandQuery::forgetsTheEarlierText()
{
    Query q;
    q.query.setText(splitCommandText(u"todo milk"_s));
    q.query.setText(splitCommandText(u"milk"_s));
    QVERIFY(!q.query.isCommand());
    QCOMPARE(q.query.command(), QString());
    QCOMPARE(q.query.arguments(), QString());
    QCOMPARE(q.query.statusText(), QString());
    q.query.setText(splitCommandText(u"xyz "_s));
    QCOMPARE(q.query.statusText(), u"xyz | Unknown command"_s);
}

void tst_CommandQuery::splitsTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isCommand");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("statusText");

    const QString none;
    const QString status = u"todo | Tasks"_s;
    QTest::newRow("empty text: none") << none << false << none << none << none;
    QTest::newRow("blanks alone: none") << u"  "_s << false << none << none << none;
    QTest::newRow("known, alone: command") << u"todo"_s << true << u"todo"_s << none << status;
    QTest::newRow("known, after a blank: command")
        << u" todo"_s << true << u"todo"_s << none << status;
    QTest::newRow("known, between blanks: command")
        << u"  todo  "_s << true << u"todo"_s << none << status;
    QTest::newRow("known with text, after a blank: none")
        << u" todo milk"_s << false << none << none << none;
    QTest::newRow("alias: command")
        << u"tasks"_s << true << u"tasks"_s << none << u"tasks | Tasks"_s;
    QTest::newRow("capitals alone: none") << u"TODO"_s << false << none << none << none;
    QTest::newRow("capitals after a blank: none") << u" ToDo"_s << false << none << none << none;
    QTest::newRow("capitals and a blank: command as typed")
        << u"ToDo "_s << true << u"ToDo"_s << none << u"ToDo | Tasks"_s;
    QTest::newRow("known, and a blank: no arguments")
        << u"todo "_s << true << u"todo"_s << none << status;
    QTest::newRow("arguments: untrimmed")
        << u"todo  buy milk "_s << true << u"todo"_s << u" buy milk "_s << status;
    QTest::newRow("tab in front: trimmed off the command")
        << u"\ttodo milk"_s << true << u"todo"_s << u"milk"_s << status;
    QTest::newRow("unknown, alone: none") << u"xyz"_s << false << none << none << none;
    QTest::newRow("unknown, and a blank: unknown command")
        << u"xyz "_s << true << u"xyz"_s << none << u"xyz | Unknown command"_s;
    QTest::newRow("place markers: stay")
        << u"%2 %1"_s << true << u"%2"_s << u"%1"_s << u"%2 | Unknown command"_s;
    QTest::newRow("tab alone before a blank: empty command")
        << u"\t x"_s << true << none << u"x"_s << u" | Unknown command"_s;
}

void tst_CommandQuery::splitsTheText()
{
    QFETCH(const QString, text);
    Query q;
    q.query.setText(splitCommandText(text));
    QTEST(q.query.isCommand(), "isCommand");
    QTEST(q.query.command(), "command");
    QTEST(q.query.arguments(), "arguments");
    QTEST(q.query.statusText(), "statusText");
}

void tst_CommandQuery::findsTheRecords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("showsAll");
    QTest::addColumn<QStringList>("queries");
    QTest::addColumn<QStringList>("records");

    const QStringList none;
    const QStringList todoRow(u"row"_s);
    const auto web = [](const QString &text) {
        return QStringList(u"Search \"%1\""_s.arg(text));
    };
    QTest::newRow("command: plugin") << u"todo"_s << true << QStringList(QString()) << todoRow;
    QTest::newRow("command and arguments: plugin")
        << u"tasks  milk"_s << true << QStringList(u" milk"_s) << todoRow;
    QTest::newRow("command in capitals: plugin")
        << u"TODO milk"_s << true << QStringList(u"milk"_s) << todoRow;
    QTest::newRow("command without records: web")
        << u"todo nothing"_s << true << QStringList(u"nothing"_s) << web(u"todo nothing"_s);
    QTest::newRow("unknown command: web") << u"xyz  milk "_s << true << none << web(u"xyz  milk"_s);
    QTest::newRow("name: application") << u"notep"_s << true << none << QStringList(u"Notepad"_s);
    QTest::newRow("name with the preference off: application")
        << u"notep"_s << false << none << QStringList(u"Notepad"_s);
    QTest::newRow("no name: web") << u" xyz "_s << true << none << web(u"xyz"_s);
    QTest::newRow("blanks with the preference off: none") << u"  "_s << false << none << none;
    QTest::newRow("nothing with the preference off: none") << QString() << false << none << none;
}

void tst_CommandQuery::findsTheRecords()
{
    QFETCH(const QString, text);
    QFETCH(const bool, showsAll);
    Query q;
    q.settings.setShowAllAppsWhenSearchEmpty(showsAll);
    q.query.setText(splitCommandText(text));
    QCOMPARE(q.plugin->queries, QStringList()); // asked only by records()
    QTEST(titles(q.query.records()), "records");
    QTEST(q.plugin->queries, "queries");
}

void tst_CommandQuery::findsAllApplicationsForBlankText()
{
    Query q;
    for (const QString &text : {QString(), u"  "_s}) {
        q.query.setText(splitCommandText(text));
        QCOMPARE(q.query.records(), q.launcher.search(QString()));
        QCOMPARE(q.query.records().size(), launchertest::builtinCount);
    }
}

void tst_CommandQuery::opensAtOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("preference");
    QTest::addColumn<bool>("opens");

    QTest::newRow("command and a blank: opens") << u"todo "_s << true << true;
    QTest::newRow("command and blanks: opens") << u"todo   "_s << true << true;
    QTest::newRow("capitals and a blank: opens") << u"TODO "_s << true << true;
    QTest::newRow("preference off: waits") << u"todo "_s << false << false;
    QTest::newRow("arguments: wait") << u"todo milk"_s << true << false;
    QTest::newRow("command alone: waits") << u"todo"_s << true << false;
    QTest::newRow("command between blanks: waits") << u" todo "_s << true << false;
    QTest::newRow("unknown command: waits") << u"xyz "_s << true << false;
}

void tst_CommandQuery::opensAtOnce()
{
    QFETCH(const QString, text);
    QFETCH(const bool, preference);
    Query q;
    q.settings.setPluginAutoEnter(preference);
    q.query.setText(splitCommandText(text));
    QTEST(q.query.opensAtOnce(), "opens");
}

void tst_CommandQuery::knowsByWhichTextsItFinds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("searchTexts");
    QTest::newRow("programs") << u"fire"_s << QStringList(u"fire"_s);
    QTest::newRow("programs, after a blank") << u" calc x"_s << QStringList(u" calc x"_s);
    QTest::newRow("programs by command")
        << u"App visual studio"_s << QStringList(u"visual studio"_s);
    QTest::newRow("files, each word") << u"file  my  report"_s << QStringList{u"my"_s, u"report"_s};
    QTest::newRow("folder") << u"cd /tmp"_s << QStringList();
    QTest::newRow("page") << u"todo milk"_s << QStringList();
    QTest::newRow("unknown command") << u"xyz abc"_s << QStringList();
}

void tst_CommandQuery::knowsByWhichTextsItFinds()
{
    QFETCH(QString, text);
    Query q;
    q.plugins.registerPlugin(new AppPlugin(&q.launcher, &q.plugins));
    q.plugins.registerPlugin(new FilePlugin(q.plugins.rowsChanged(), &q.plugins));
    q.query.setText(splitCommandText(text));
    QTEST(q.query.searchTexts(), "searchTexts");
}

VASKEL_TEST(tst_CommandQuery, QApplication)
#include "tst_CommandQuery.moc"
