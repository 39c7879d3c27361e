// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/ScriptPlugin.h"

#include "commands/ScriptAnswer.h"
#include "commands/ScriptProcess.h"
#include "commands/Steps.h"
#include "core/ResultRecord.h"
#include "core/RowsChanged.h"
#include "plugins/OpenedFiles.h"
#include "support/FileContent.h"
#include "support/RunningProcess.h"
#include "support/TestProgram.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

namespace {

// A file that a program has written into its folder.
QString scriptFile(const QString &name)
{
    return testhome::path() + "/script/"_L1 + name;
}

QString titles(const QVariantList &records)
{
    QStringList result;
    for (const QVariant &row : records) {
        result.append(recordTitle(row.toMap()));
    }
    return result.join(u'|');
}

bool isInert(const QVariantList &records)
{
    return records.size() == 1 && recordAction(records.first().toMap()).isEmpty();
}

bool exists(const QString &path)
{
    return QFile::exists(testhome::path() + u'/' + path);
}

// Creates the file for which programs wait, so that they go on.
void release(const QString &name)
{
    testhome::writeFile("script/"_L1 + name, {});
}

// A command whose answer has one row "x" for each start so far.
CommandFile showingItsStarts()
{
    return commandfolder::steps({u"append"_s, u"starts"_s, u"x"_s, u"show"_s, u"starts"_s});
}

const QString waiting = u"Waiting for My command..."_s;

} // namespace

class tst_ScriptPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void hasTheTextsOfTheFile();
    void answersAtOnceThatTheProgramIsAsked();
    void returnsTheRowsWhenTheProgramHasEnded();
    void trimsTheText();
    void startsOnceForOneText();
    void startsAgainForTheSameTextAfterItsAnswer();
    void startsAgainIfNobodyTookTheAnswer();
    void keepsTheRowsOfTheTextBefore();
    void dropsOldRowsWhenTheNewOnesDoNotCome();
    void endsTheProgramOfAnEarlierText();
    void startsAfterTheDelay();
    void showsAnErrorAsOneInertRow();
    void showsAWrongAnswerAsOneInertRow();
    void hasARowForAnEmptyAnswer();
    void runsScriptsOfTheUsualForms_data();
    void runsScriptsOfTheUsualForms();
    void copies();
    void opensAFile();
    void runsAProgram();
    void refusesOtherActions();
};

void tst_ScriptPlugin::hasTheTextsOfTheFile()
{
    RowsChanged rowsChanged;
    CommandFile file = commandfolder::steps({});
    QCOMPARE(ScriptPlugin(file, &rowsChanged).command(), u"mine"_s);
    QCOMPARE(ScriptPlugin(file, &rowsChanged).description(), u"My command"_s);
    file.description = u"What it does"_s;
    QCOMPARE(ScriptPlugin(file, &rowsChanged).description(), u"What it does"_s);
}

void tst_ScriptPlugin::answersAtOnceThatTheProgramIsAsked()
{
    RowsChanged rowsChanged;
    ScriptPlugin plugin(commandfolder::steps({u"wait"_s, u"never"_s}), &rowsChanged);
    const QVariantList records = plugin.query(u"a"_s);
    QCOMPARE(titles(records), waiting);
    QVERIFY(isInert(records));
}

void tst_ScriptPlugin::returnsTheRowsWhenTheProgramHasEnded()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(
        commandfolder::steps({u"print"_s, u"{query} 1"_s, u"print"_s, u"{query} 2"_s}),
        &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(changed.first().first().toString(), u"mine"_s);
    QCOMPARE(titles(plugin.query(u"a"_s)), u"a 1|a 2"_s);
    QCoreApplication::processEvents();
    QCOMPARE(changed.size(), 1); // the answer to the signal causes no other
}

void tst_ScriptPlugin::trimsTheText()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(commandfolder::steps({u"print"_s, u"({query})"_s}), &rowsChanged);
    plugin.query(u"  a b "_s);
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(titles(plugin.query(u"a b"_s)), u"(a b)"_s);
}

void tst_ScriptPlugin::startsOnceForOneText()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(commandfolder::steps({u"append"_s, u"starts"_s, u"x"_s, u"wait"_s, u"go"_s,
                                              u"show"_s, u"starts"_s}),
                        &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_VERIFY(exists(u"script/starts"_s));
    plugin.query(u"a "_s);
    release(u"go"_s);
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(titles(plugin.query(u"a"_s)), u"x"_s);
}

void tst_ScriptPlugin::startsAgainForTheSameTextAfterItsAnswer()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(showingItsStarts(), &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(titles(plugin.query(u"a"_s)), u"x"_s);
    QCOMPARE(titles(plugin.query(u"a"_s)), u"x"_s);
    QTRY_COMPARE(titles(plugin.query(u"a"_s)), u"x|x"_s);
}

void tst_ScriptPlugin::startsAgainIfNobodyTookTheAnswer()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(showingItsStarts(), &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    QTest::qWait(2100);
    plugin.query(u"a"_s);
    QVERIFY(plugin.findChild<ScriptProcess *>());
    QTRY_COMPARE(titles(plugin.query(u"a"_s)), u"x|x"_s);
}

void tst_ScriptPlugin::keepsTheRowsOfTheTextBefore()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(commandfolder::steps({u"print"_s, u"{query}"_s}), &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    plugin.query(u"a"_s);
    QCOMPARE(titles(plugin.query(u"ab"_s)), u"a"_s);
    QTRY_COMPARE(titles(plugin.query(u"ab"_s)), u"ab"_s);
}

void tst_ScriptPlugin::dropsOldRowsWhenTheNewOnesDoNotCome()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(commandfolder::steps({u"wait"_s, u"go-{query}"_s, u"print"_s, u"a"_s}),
                        &rowsChanged);
    release(u"go-a"_s);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    plugin.query(u"a"_s);
    plugin.query(u"ab"_s);
    QCOMPARE(titles(plugin.query(u"abc"_s)), u"a"_s);
    QTRY_COMPARE(changed.size(), 2);
    QCOMPARE(titles(plugin.query(u"abc"_s)), waiting);
}

void tst_ScriptPlugin::endsTheProgramOfAnEarlierText()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(
        commandfolder::steps({u"pid"_s, u"{query}"_s, u"child"_s, u"child-{query}"_s, u"wait"_s,
                              u"go-{query}"_s, u"print"_s, u"{query}"_s}),
        &rowsChanged);
    release(u"go-b"_s);
    plugin.query(u"a"_s);
    QTRY_VERIFY_WITH_TIMEOUT(exists(u"script/child-a"_s), 60'000);
    const qint64 program = contentOf(scriptFile(u"a"_s)).value().toLongLong();
    const qint64 child = contentOf(scriptFile(u"child-a"_s)).value().toLongLong();
    QVERIFY(isRunning(program));
    QVERIFY(isRunning(child));
    plugin.query(u"b"_s);
    QTRY_VERIFY(!isRunning(program));
    QTRY_VERIFY(!isRunning(child));
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(titles(plugin.query(u"b"_s)), u"b"_s);
}

void tst_ScriptPlugin::startsAfterTheDelay()
{
    RowsChanged rowsChanged;
    CommandFile file =
        commandfolder::steps({u"append"_s, u"starts"_s, u"{query}"_s, u"print"_s, u"row"_s});
    file.delayMs = 200;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(file, &rowsChanged);
    plugin.query(u"a"_s);
    QCOMPARE(titles(plugin.query(u"ab"_s)), waiting);
    QVERIFY(!plugin.findChild<ScriptProcess *>());
    QTRY_COMPARE(changed.size(), 1);
    // The program for "a" was never started.
    QCOMPARE(contentOf(scriptFile(u"starts"_s)), QByteArray("ab\n"));
}

void tst_ScriptPlugin::showsAnErrorAsOneInertRow()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    const CommandFile file = commandfolder::steps(
        {u"print"_s, u"row"_s, u"error"_s, u"no network"_s, u"exit"_s, u"3"_s});
    ScriptPlugin plugin(file, &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    const QVariantList records = plugin.query(u"a"_s);
    QCOMPARE(titles(records), file.exec.first() + " has ended with status 3"_L1);
    QCOMPARE(recordSubtitle(records.first().toMap()), u"no network"_s);
    QVERIFY(isInert(records));
}

void tst_ScriptPlugin::showsAWrongAnswerAsOneInertRow()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    CommandFile file = commandfolder::steps({u"print"_s, u"{}"_s});
    file.output = CommandFile::Output::Items;
    ScriptPlugin plugin(file, &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    const QVariantList records = plugin.query(u"a"_s);
    QCOMPARE(titles(records), u"The answer is no JSON object with a list \"items\"."_s);
    QVERIFY(isInert(records));
}

void tst_ScriptPlugin::hasARowForAnEmptyAnswer()
{
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(commandfolder::steps({}), &rowsChanged);
    plugin.query(u"a"_s);
    QTRY_COMPARE(changed.size(), 1);
    const QVariantList records = plugin.query(u"a"_s);
    QCOMPARE(titles(records), u"No results"_s);
    QVERIFY(isInert(records));
}

void tst_ScriptPlugin::runsScriptsOfTheUsualForms_data()
{
    QTest::addColumn<bool>("isItems");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("firstArgument");

    QTest::newRow("items: a constant text in a shell script") << true << QByteArray(R"(#!/bin/sh
cat << EOB
{"items": [
    {"uid": "desktop", "type": "file", "title": "Desktop", "subtitle": "~/Desktop",
     "arg": "~/Desktop", "autocomplete": "Desktop",
     "icon": {"type": "fileicon", "path": "~/Desktop"}},
    {"valid": false, "uid": "photos", "title": "Photos", "icon": {"path": "photos.png"}}
]}
EOB
)") << u"Desktop|Photos"_s << u"~/Desktop"_s;
    QTest::newRow("items: a filter in Python") << true << QByteArray(R"(#!/usr/bin/env python3
import json
import sys

query = sys.argv[1] if len(sys.argv) > 1 else ""
names = ["ant", "bee", "Übung"]
items = [{"uid": n, "title": n, "arg": n, "match": n, "text": {"copy": n, "largetype": n}}
         for n in names if query.lower() in n.lower()]
sys.stdout.write(json.dumps({"skipknowledge": True, "rerun": 0.1, "items": items}))
)") << u"bee|Übung"_s << u"bee"_s;
    QTest::newRow("items: variables, modifiers and a list of arguments")
        << true << QByteArray(R"(#!/usr/bin/env python3
import json
import sys

print(json.dumps({
    "variables": {"fruit": "banana"},
    "cache": {"seconds": 3600, "loosereload": True},
    "items": [{"title": "Open " + sys.argv[1], "arg": ["one", "two"],
               "variables": {"a": "1"}, "action": "text", "quicklookurl": "https://example.org",
               "mods": {"cmd": {"valid": True, "arg": "x", "subtitle": "y"}}}],
}, ensure_ascii=False, indent=2))
)") << u"Open b"_s
        << u"one\ntwo"_s;

    QTest::newRow("lines: a list in a shell script") << false << QByteArray(R"(#!/bin/sh
echo "reload"
echo "quit b"
)") << u"reload|quit b"_s << u"reload"_s;
    QTest::newRow("lines: a choice by the argument") << false << QByteArray(R"(#!/usr/bin/env bash
if [ x"$@" = x"b" ]
then
    echo "inner"
    exit 0
fi
echo "outer"
)") << u"inner"_s << u"inner"_s;
    QTest::newRow("lines: options of the list and of its rows") << false
                                                                << QByteArray(R"(#!/usr/bin/env bash
echo -en "\0prompt\x1fChange prompt\n"
echo -en "\0markup-rows\x1ftrue\n"
echo -en "aap\0icon\x1ffolder\n"
echo -en "blub\0nonselectable\x1ftrue\n"
echo -en "noot\0icon\x1ffolder\x1finfo\x1ftest\n"
)") << u"aap|blub|noot"_s << u"aap"_s;
}

void tst_ScriptPlugin::runsScriptsOfTheUsualForms()
{
    QFETCH(const bool, isItems);
    QFETCH(const QByteArray, script);
    CommandFile file = commandfolder::script({});
    testhome::writeFile(u"script/program"_s, script);
    file.output = isItems ? CommandFile::Output::Items : CommandFile::Output::Lines;
    RowsChanged rowsChanged;
    const QSignalSpy changed(&rowsChanged, &RowsChanged::changed);
    ScriptPlugin plugin(file, &rowsChanged);
    plugin.query(u"b"_s);
    QTRY_COMPARE(changed.size(), 1);
    const QVariantList records = plugin.query(u"b"_s);
    QTEST(titles(records), "rows");
    QTEST(actionData(recordAction(records.first().toMap())), "firstArgument");
}

void tst_ScriptPlugin::copies()
{
    RowsChanged rowsChanged;
    ScriptPlugin plugin(commandfolder::steps({}), &rowsChanged);
    QVERIFY(plugin.execute(makeAction(actiontype::copy, u"a\nb"_s, u"mine"_s)));
    QCOMPARE(QGuiApplication::clipboard()->text(), u"a\nb"_s);
}

void tst_ScriptPlugin::opensAFile()
{
    const OpenedFiles opened;
    RowsChanged rowsChanged;
    ScriptPlugin plugin(commandfolder::steps({}), &rowsChanged);
    QVERIFY(plugin.execute(makeAction(actiontype::openFile, u"/a b#c.d"_s, u"mine"_s)));
    QVERIFY(plugin.execute(makeAction(actiontype::openUrl, u"file:///d%20e"_s, u"mine"_s)));
    QCOMPARE(opened.paths, QStringList({u"/a b#c.d"_s, u"/d e"_s}));
}

void tst_ScriptPlugin::runsAProgram()
{
    RowsChanged rowsChanged;
    CommandFile file = commandfolder::steps({});
    file.action = CommandFile::Action::Run;
    const QString program = file.exec.first();
    file.run = QStringList{program,     u"append"_s, u"done"_s,       u"({arg})"_s,
                           u"append"_s, u"done"_s,   u"--for={arg}"_s};
    ScriptPlugin plugin(file, &rowsChanged);
    QVERIFY(plugin.execute(makeAction(ScriptAnswer::runType, u"a 'b' \"$c"_s, u"mine"_s)));
    QTRY_COMPARE(contentOf(scriptFile(u"done"_s)), QByteArray("(a 'b' \"$c)\n--for=a 'b' \"$c\n"));
}

void tst_ScriptPlugin::refusesOtherActions()
{
    RowsChanged rowsChanged;
    ScriptPlugin plugin(commandfolder::steps({}), &rowsChanged);
    QVERIFY(!plugin.execute(makeAction(actiontype::copy, QString(), u"mine"_s)));
    QVERIFY(!plugin.execute(makeAction(actiontype::launch, u"/bin/true"_s, u"mine"_s)));
    QVERIFY(!plugin.execute(makeAction(ScriptAnswer::runType, u"a"_s, u"mine"_s))); // no program
    CommandFile file = commandfolder::steps({});
    file.run = QStringList{u"./none"_s};
    QVERIFY(!ScriptPlugin(file, &rowsChanged)
                 .execute(makeAction(ScriptAnswer::runType, u"a"_s, u"mine"_s)));
}

VASKEL_TEST(tst_ScriptPlugin, QApplication)
#include "tst_ScriptPlugin.moc"
