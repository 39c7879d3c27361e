// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

const QString bingRow = u"\nSearch with Bing"_s;

void paste(QLineEdit &edit, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    edit.paste();
}

} // namespace

/// The text of the box determines the rows, the status line and the page.
class tst_MainWindowSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void searchesOnceAtTheStart();
    void answersTheText_data();
    void answersTheText();
    void emptyBoxFollowsThePreferenceAtOnce();
    void blankTextListsAllApplications();
    void blankTextShowsNothingWithThePreferenceOff();

    void rowsKeepTheOrderAndTheNumberOfTheRecords();
    void rowCarriesItsRecord();
    void recordWithoutTextsIsALineFeed();
    void newSearchReplacesTheRowsAndStartsAtTheFirst();

    void statusLineShowsTheCommand_data();
    void statusLineShowsTheCommand();
    void statusLineShowsMarkupAsPlainText();
    void statusLineHasVisibleMarks();
    void longCommandDoesNotWidenTheWindow();

    void webRowHasTheAddress();
    void webRowFollowsTheEngine();
    void webRowReplacesAnEmptyAnswer();
    void disabledPluginShowsItsNotice();

    void typedCommandKeepsItsBlankInTheArguments();
    void pastedCommandHasNoBlank();

    void joinedTextSearchesTheApplications();
    void waitsForAPauseInTheTyping();
    void everyChangeRestartsTheDelay();
    void badgeSearchesOnceForBothOfItsChanges();
    void searchesWhenOnlyTheCommandChanges();

    void autoEnterOpensThePageAtOnce();
    void autoEnterKeepsTheStripVisible();
    void autoEnterNeedsEmptyArguments_data();
    void autoEnterNeedsEmptyArguments();
    void autoEnterNeedsTheBlank();
    void autoEnterKeepsAnOpenPage();
};

void tst_MainWindowSearch::searchesOnceAtTheStart()
{
    const Window w;
    QCOMPARE(w.list->count(), 8);
    QCOMPARE(w.list->item(0)->text(), u"Notepad\n"_s);
    QCOMPARE(w.list->currentRow(), 0);
    QVERIFY(w.status->isHidden());
    QVERIFY(!w.searchTimer().isActive());
}

void tst_MainWindowSearch::answersTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("queries");
    QTest::addColumn<QString>("status");
    QTest::addColumn<QString>("firstRow");

    const QStringList none;
    const QString noStatus;
    const QString calcRow = u"row 1\nabout row 1"_s;
    const QString calcStatus = u"calc | CALC"_s;
    QTest::newRow("command and blank has no arguments")
        << u"calc "_s << QStringList{QString()} << calcStatus << calcRow;
    QTest::newRow("command alone has no arguments")
        << u"calc"_s << QStringList{QString()} << calcStatus << calcRow;
    QTest::newRow("arguments arrive untrimmed")
        << u"calc  1 + 2 "_s << QStringList{u" 1 + 2 "_s} << calcStatus << calcRow;
    QTest::newRow("blank before a command runs it without arguments")
        << u" calc"_s << QStringList{QString()} << calcStatus << calcRow;
    QTest::newRow("blanks around a command run it without arguments")
        << u"  calc  "_s << QStringList{QString()} << calcStatus << calcRow;
    QTest::newRow("blank before command and arguments searches the web")
        << u" calc 1"_s << none << noStatus << u"Search \"calc 1\""_s + bingRow;
    QTest::newRow("capitals alone are no command")
        << u"CALC"_s << none << noStatus << u"Calculator\n"_s;
    QTest::newRow("capitals with a blank are a command")
        << u"CALC 1"_s << QStringList{u"1"_s} << u"CALC | CALC"_s << calcRow;
    QTest::newRow("tab before the command is trimmed")
        << u"\tcalc 1"_s << QStringList{u"1"_s} << calcStatus << calcRow;
    QTest::newRow("unknown command never reaches the applications")
        << u"task manager"_s << none << u"task | Unknown command"_s
        << u"Search \"task manager\""_s + bingRow;
    QTest::newRow("unknown command with an argument")
        << u"xyz abc"_s << none << u"xyz | Unknown command"_s << u"Search \"xyz abc\""_s + bingRow;
    QTest::newRow("unknown command with a blank")
        << u"xyz "_s << none << u"xyz | Unknown command"_s << u"Search \"xyz\""_s + bingRow;
    QTest::newRow("unknown command alone")
        << u"xyz"_s << none << noStatus << u"Search \"xyz\""_s + bingRow;
    QTest::newRow("part of a name") << u"notep"_s << none << noStatus << u"Notepad\n"_s;
    QTest::newRow("part of a name after a blank")
        << u" notep "_s << none << noStatus << u"Notepad\n"_s;
}

void tst_MainWindowSearch::answersTheText()
{
    QFETCH(QString, text);
    QFETCH(QStringList, queries);
    QFETCH(QString, status);
    QFETCH(QString, firstRow);

    Window w;
    w.calc.records = numberedRecords(1);
    w.enter(text);
    QCOMPARE(w.calc.queries, queries);
    QCOMPARE(w.status->isHidden(), status.isEmpty());
    if (!status.isEmpty()) {
        QCOMPARE(w.status->text(), status);
    }
    QVERIFY(w.list->count() > 0);
    QCOMPARE(w.list->item(0)->text(), firstRow);
}

void tst_MainWindowSearch::emptyBoxFollowsThePreferenceAtOnce()
{
    Window w;
    QCOMPARE(w.list->count(), 8);
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QCOMPARE(w.list->count(), 0);
    w.settings.setShowAllAppsWhenSearchEmpty(true);
    QCOMPARE(w.list->count(), 8);
}

void tst_MainWindowSearch::blankTextListsAllApplications()
{
    Window w;
    w.enter(u"   "_s);
    QCOMPARE(w.list->count(), 8);
    QVERIFY(w.status->isHidden());
    QVERIFY(w.strip->isHidden());
}

void tst_MainWindowSearch::blankTextShowsNothingWithThePreferenceOff()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    w.enter(u"   "_s);
    QCOMPARE(w.list->count(), 0);
    QVERIFY(w.strip->isHidden());
}

void tst_MainWindowSearch::rowsKeepTheOrderAndTheNumberOfTheRecords()
{
    Window w;
    w.calc.records = numberedRecords(500);
    w.enter(u"calc "_s);
    QCOMPARE(w.list->count(), 500);
    QCOMPARE(w.list->item(0)->text(), u"row 1\nabout row 1"_s);
    QCOMPARE(w.list->item(499)->text(), u"row 500\nabout row 500"_s);
}

void tst_MainWindowSearch::rowCarriesItsRecord()
{
    Window w;
    const QVariantMap record = testRecord(u"t"_s, action(u"copy"_s, u"3"_s, u"calc"_s), u"/p"_s);
    w.calc.records = {record};
    w.enter(u"calc "_s);
    QCOMPARE(w.list->item(0)->data(Qt::UserRole).toMap(), record);
    QVERIFY(w.list->item(0)->icon().isNull());
}

void tst_MainWindowSearch::recordWithoutTextsIsALineFeed()
{
    Window w;
    w.calc.records = {QVariantMap(), QVariant(5)};
    w.enter(u"calc "_s);
    QCOMPARE(w.rows(), QStringList({u"\n"_s, u"\n"_s}));
}

void tst_MainWindowSearch::newSearchReplacesTheRowsAndStartsAtTheFirst()
{
    Window w;
    w.moveSelection(3);
    QCOMPARE(w.list->currentRow(), 3);
    w.calc.records = numberedRecords(2);
    w.enter(u"calc "_s);
    QCOMPARE(w.rows(), QStringList({u"row 1\nabout row 1"_s, u"row 2\nabout row 2"_s}));
    QCOMPARE(w.list->currentRow(), 0);
    QVERIFY(w.list->item(0)->isSelected());
}

void tst_MainWindowSearch::statusLineShowsTheCommand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("status");
    QTest::newRow("known command") << u"todo x"_s << u"todo | TODO"_s;
    QTest::newRow("alias") << u"user x"_s << u"user | SET"_s;
    QTest::newRow("command as it was typed") << u"ToDo x"_s << u"ToDo | TODO"_s;
    QTest::newRow("unknown command") << u"Xyz x"_s << u"Xyz | Unknown command"_s;
    QTest::newRow("place markers stay") << u"%2 x"_s << u"%2 | Unknown command"_s;
}

void tst_MainWindowSearch::statusLineShowsTheCommand()
{
    QFETCH(QString, text);
    Window w;
    w.enter(text);
    QVERIFY(!w.status->isHidden());
    QTEST(w.status->text(), "status");
    w.enter(u"note"_s);
    QVERIFY(w.status->isHidden());
}

void tst_MainWindowSearch::statusLineHasVisibleMarks()
{
    Window w;
    w.enter(u"a\u202eb x"_s);
    QCOMPARE(w.status->text(), u"a⟨U+202E⟩b | Unknown command"_s);
}

void tst_MainWindowSearch::statusLineShowsMarkupAsPlainText()
{
    const Window w;
    QCOMPARE(w.status->textFormat(), Qt::PlainText);
}

void tst_MainWindowSearch::longCommandDoesNotWidenTheWindow()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(QString(500, u'w') + u" x"_s);
    w.settle();
    QCOMPARE(w.window.width(), 760);
}

void tst_MainWindowSearch::webRowHasTheAddress()
{
    Window w;
    w.enter(u" xyz 天 "_s);
    const QVariantMap record = w.list->item(0)->data(Qt::UserRole).toMap();
    QCOMPARE(record,
             QVariantMap(
                 {{u"title"_s, u"Search \"xyz 天\""_s},
                  {u"subtitle"_s, u"Search with Bing"_s},
                  {u"action"_s,
                   QVariantMap{{u"type"_s, u"openUrl"_s},
                               {u"data"_s, u"https://www.bing.com/search?q=xyz%20%E5%A4%A9"_s}}}}));
}

void tst_MainWindowSearch::webRowFollowsTheEngine()
{
    Window w;
    w.settings.setSearchEngine(u"DuckDuckGo"_s);
    w.enter(u"xyz"_s);
    QCOMPARE(w.list->item(0)->text(), u"Search \"xyz\"\nSearch with DuckDuckGo"_s);
    const QVariantMap record = w.list->item(0)->data(Qt::UserRole).toMap();
    QCOMPARE(record.value(u"action"_s).toMap().value(u"data"_s).toString(),
             u"https://duckduckgo.com/?q=xyz"_s);
}

void tst_MainWindowSearch::webRowReplacesAnEmptyAnswer()
{
    Window w;
    w.enter(u"calc 1"_s);
    QCOMPARE(w.rows(), QStringList(u"Search \"calc 1\""_s + bingRow));
    QCOMPARE(w.status->text(), u"calc | CALC"_s);
}

void tst_MainWindowSearch::disabledPluginShowsItsNotice()
{
    Window w;
    w.settings.setPluginEnabled(u"calc"_s, false);
    w.calc.records = numberedRecords(3);
    w.enter(u"calc 1"_s);
    QCOMPARE(w.rows(),
             QStringList(u"Plugin disabled\ncalc plugin has been disabled in settings"_s));
    QCOMPARE(w.status->text(), u"calc | CALC"_s);
}

void tst_MainWindowSearch::typedCommandKeepsItsBlankInTheArguments()
{
    Window w;
    QTest::keyClicks(w.edit, u"calc 1+2"_s);
    QCOMPARE(w.edit->text(), u" 1+2"_s);
    w.search();
    QCOMPARE(w.calc.queries, QStringList(u" 1+2"_s));
}

void tst_MainWindowSearch::pastedCommandHasNoBlank()
{
    Window w;
    paste(*w.edit, u"calc 1+2"_s);
    QCOMPARE(w.edit->text(), u"1+2"_s);
    w.search();
    QCOMPARE(w.calc.queries, QStringList(u"1+2"_s));
}

void tst_MainWindowSearch::joinedTextSearchesTheApplications()
{
    Window w;
    for (const QString &name : {u"calculator"_s, u"settings"_s}) {
        w.box->setText({});
        QTest::keyClicks(w.edit, name);
        w.search();
        QVERIFY(!w.status->isHidden()); // the command
        QTest::keyClick(w.edit, Qt::Key_Home);
        QTest::keyClick(w.edit, Qt::Key_Backspace, Qt::ControlModifier);
        QVERIFY(w.searchTimer().isActive());
        w.search();
        QVERIFY(w.status->isHidden());
        QCOMPARE(w.currentTitle().toLower(), name);
    }
}

void tst_MainWindowSearch::waitsForAPauseInTheTyping()
{
    Window w;
    w.calc.records = numberedRecords(1);
    QVERIFY(w.searchTimer().isSingleShot());
    QCOMPARE(w.searchTimer().timerType(), Qt::PreciseTimer);
    QCOMPARE(w.searchTimer().interval(), 120);
    w.box->setText(u"calc 1"_s);
    QCOMPARE(w.list->count(), 8);
    QTRY_COMPARE(w.list->count(), 1);
    QCOMPARE(w.calc.queries, QStringList(u"1"_s));
}

void tst_MainWindowSearch::everyChangeRestartsTheDelay()
{
    Window w;
    QTimer &timer = w.searchTimer();
    timer.setTimerType(Qt::PreciseTimer);
    timer.setInterval(60000); // long enough for typing on a slow machine
    QTest::keyClicks(w.edit, u"calc 1"_s);
    QVERIFY(timer.isActive());
    QTRY_VERIFY(timer.remainingTime() < 59800);
    QTest::keyClicks(w.edit, u"2"_s);
    QVERIFY(timer.remainingTime() >= 59800);
    QCOMPARE(w.calc.queries, QStringList());

    timer.start(0);
    QTRY_COMPARE(w.calc.queries, QStringList(u" 12"_s));
}

void tst_MainWindowSearch::badgeSearchesOnceForBothOfItsChanges()
{
    Window w;
    const QSignalSpy changed(w.edit, &QLineEdit::textChanged);
    const QSignalSpy timedOut(&w.searchTimer(), &QTimer::timeout);
    paste(*w.edit, u"calc 1"_s);
    QCOMPARE(changed.count(), 2);
    QTRY_COMPARE(timedOut.count(), 1);
    QVERIFY(!w.searchTimer().isActive());
    QCOMPARE(w.calc.queries, QStringList(u"1"_s));
}

void tst_MainWindowSearch::searchesWhenOnlyTheCommandChanges()
{
    Window w;
    w.box->setText(u"calc 1"_s);
    QTRY_COMPARE(w.calc.queries, QStringList(u"1"_s));
    w.box->setText(u"todo 1"_s);
    QTRY_COMPARE(w.todo.queries, QStringList(u"1"_s));
    w.box->setText(u"todo 1"_s);
    QTRY_COMPARE(w.todo.queries, QStringList({u"1"_s, u"1"_s}));
}

void tst_MainWindowSearch::autoEnterOpensThePageAtOnce()
{
    Window w;
    w.settings.setPluginAutoEnter(true);
    w.enter(u"note"_s);
    const QStringList before = w.rows();
    QVERIFY(w.strip->isHidden());

    w.enter(u"todo "_s);
    QVERIFY(w.todo.page);
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QCOMPARE(w.todo.queries, QStringList());
    QCOMPARE(w.rows(), before);
    QVERIFY(w.status->isHidden());
}

void tst_MainWindowSearch::autoEnterKeepsTheStripVisible()
{
    Window w;
    w.settings.setPluginAutoEnter(true);
    QVERIFY(!w.strip->isHidden());
    w.enter(u"todo "_s);
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QVERIFY(!w.strip->isHidden());
}

void tst_MainWindowSearch::autoEnterNeedsEmptyArguments_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("preference");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("opens");
    QTest::newRow("empty arguments open") << u"todo "_s << true << true << true;
    QTest::newRow("blank arguments open") << u"todo   "_s << true << true << true;
    QTest::newRow("arguments do not") << u"todo x"_s << true << true << false;
    QTest::newRow("preference off does not") << u"todo "_s << false << true << false;
    QTest::newRow("plugin switched off does not") << u"todo "_s << true << false << false;
    QTest::newRow("plugin without a page does not") << u"calc "_s << true << true << false;
    QTest::newRow("unknown command does not") << u"xyz "_s << true << true << false;
}

void tst_MainWindowSearch::autoEnterNeedsEmptyArguments()
{
    QFETCH(QString, text);
    QFETCH(bool, preference);
    QFETCH(bool, enabled);
    QFETCH(bool, opens);

    Window w;
    w.settings.setPluginAutoEnter(preference);
    w.settings.setPluginEnabled(u"todo"_s, enabled);
    w.enter(text);
    QCOMPARE(!w.isListCurrent(), opens);
    QCOMPARE(w.status->isHidden(), opens);
}

void tst_MainWindowSearch::autoEnterNeedsTheBlank()
{
    Window w;
    w.settings.setPluginAutoEnter(true);
    w.enter(u" todo"_s); // a command without a blank after it
    QVERIFY(w.isListCurrent());
    QCOMPARE(w.todo.queries, QStringList(QString()));
}

void tst_MainWindowSearch::autoEnterKeepsAnOpenPage()
{
    Window w;
    w.settings.setPluginAutoEnter(true);
    w.enter(u"todo "_s);
    QCOMPARE(w.todo.viewCommands, QStringList(u"todo"_s));
    w.search(); // with an open page, the text is queried
    QCOMPARE(w.todo.viewCommands, QStringList(u"todo"_s));
    QCOMPARE(w.todo.queries, QStringList(QString()));
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QVERIFY(!w.status->isHidden());
}

VASKEL_TEST(tst_MainWindowSearch, QApplication)
#include "tst_MainWindowSearch.moc"
