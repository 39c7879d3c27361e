// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RowKeys.h"

#include "core/ArgumentsAction.h"
#include "core/ResultRecord.h"
#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/ResultList.h"
#include "ui/WindowTest.h"

#include "plugins/DirectoryPlugin.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

constexpr Qt::KeyboardModifiers control = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers alt = Qt::AltModifier;

QString clipboard()
{
    return QGuiApplication::clipboard()->text();
}

/// Records that copy their numbers, from 0 on.
QVariantList copyRecords(int count)
{
    QVariantList records;
    for (int number = 0; number < count; ++number) {
        const QString data = QString::number(number);
        records.append(testRecord(data, action(u"copy"_s, data, u"calc"_s)));
    }
    return records;
}

/// The folder of FolderWindow.
QString root()
{
    return testhome::path() + "/home"_L1;
}

/// The window with the command "cd", and the folders a/b/c.
class FolderWindow
{
public:
    FolderWindow()
    {
        testhome::writeFile(u"home/a/b/c/file"_s, "text");
        testhome::writeFile(u"home/a/file.txt"_s, "text");
        w.plugins.registerPlugin(new DirectoryPlugin(&w.plugins));
        w.box->setCommands({u"calc"_s, u"cd"_s, u"todo"_s});
    }

    /// Lists a folder and makes the row with this title current.
    void list(const QString &path, const QString &title)
    {
        w.enter("cd "_L1 + path);
        w.settle();
        const auto items = w.list->findItems(title + u'\n', Qt::MatchStartsWith);
        QCOMPARE(items.size(), 1);
        w.list->setCurrentItem(items.first());
    }

    Window w;
};

} // namespace

/// The keys that act on the rows.
class tst_RowKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void pageKeysMoveTheRow();
    void endKeysMoveTheRow();
    void keysOfTheEditStay();
    void keysWithoutRowsDoNothing();

    void lettersInTheListGoToTheBox_data();
    void lettersInTheListGoToTheBox();
    void lettersAfterAClickGoToTheBox();
    void otherKeysStayInTheList();

    void altAndDigitStartsAVisibleRow_data();
    void altAndDigitStartsAVisibleRow();
    void altAndDigitCountsFromTheFirstVisibleRow();
    void altAndDigitNeedsAVisibleRow();
    void altAndDigitOnAnInertRowDoesNothing();
    void altAndDigitOpensAPageLikeEnter();
    void digitsShowWhileAltIsHeld();

    void controlCCopiesTheRow_data();
    void controlCCopiesTheRow();
    void controlCCopiesTheSelectionOfTheBox();
    void controlDPinsAndUnpins();
    void controlDWithoutAPathDoesNothing();
    void controlEnterShowsTheFileInItsFolder_data();
    void controlEnterShowsTheFileInItsFolder();
    void controlEnterKeepsTheWindowIfItFails();
    void controlEnterOnAnInertRowDoesNothing();
    void controlEnterWithoutAFileIsEnter();

    void controlEnterAddsATask();
    void controlEnterAddsTheWholeTextAsATask();
    void controlEnterAddsATaskWithItsPageOpen();
    void controlEnterKeepsTheTextIfTheTaskIsNotAdded();
    void controlEnterAddsNoTaskTwice();
    void controlEnterOpensNoPage();

    void tabCompletesTheArguments();
    void tabEntersTheFolder();
    void tabEntersAFolderWithABlankAtTheEnd();
    void tabInTheRootKeepsItsOneSeparator();
    void tabStaysOnOtherRows_data();
    void tabStaysOnOtherRows();
    void enterOnAFolderOpensItAsBefore();
    void altUpListsTheParent();
    void altUpTwiceGoesTwoFoldersUp();
    void altUpInTheRootStaysThere();
    void altUpElsewhereDoesNothing();

    void pageTakesNoRowKeys();
};

void tst_RowKeys::init()
{
    reset();
    QGuiApplication::clipboard()->setText(u"before"_s);
}

void tst_RowKeys::pageKeysMoveTheRow()
{
    Window w;
    w.calc.records = numberedRecords(40);
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    const int page = w.list->viewport()->height() / w.list->sizeHintForRow(0);
    QVERIFY(page > 1);
    QTest::keyClick(w.edit, Qt::Key_PageDown);
    QCOMPARE(w.list->currentRow(), page);
    QTest::keyClick(w.edit, Qt::Key_PageDown);
    QCOMPARE(w.list->currentRow(), 2 * page);
    QTest::keyClick(w.edit, Qt::Key_PageUp);
    QCOMPARE(w.list->currentRow(), page);
    for (int press = 0; press < 40; ++press) {
        QTest::keyClick(w.edit, Qt::Key_PageDown);
    }
    QCOMPARE(w.list->currentRow(), 39);
    QVERIFY(w.edit->hasFocus());
}

void tst_RowKeys::endKeysMoveTheRow()
{
    Window w;
    QVERIFY(w.showActive());
    w.list->setCurrentRow(3);
    QTest::keyClick(w.edit, Qt::Key_End, control);
    QCOMPARE(w.list->currentRow(), 7);
    QTest::keyClick(w.edit, Qt::Key_Home, control);
    QCOMPARE(w.list->currentRow(), 0);
}

void tst_RowKeys::keysOfTheEditStay()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    QTest::keyClick(w.edit, Qt::Key_Home);
    QCOMPARE(w.edit->cursorPosition(), 0);
    QTest::keyClick(w.edit, Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(w.edit->selectedText(), u"paint"_s);
    QTest::keyClick(w.edit, Qt::Key_X, control);
    QCOMPARE(w.edit->text(), QString());
}

void tst_RowKeys::keysWithoutRowsDoNothing()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp}) {
        QTest::keyClick(w.edit, key);
    }
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_C, Qt::Key_D, Qt::Key_Return}) {
        QTest::keyClick(w.edit, key, control);
    }
    for (const Qt::Key key : {Qt::Key_1, Qt::Key_2, Qt::Key_9, Qt::Key_Up}) {
        QTest::keyClick(w.edit, key, alt);
    }
    QCOMPARE(w.list->currentRow(), -1);
    QCOMPARE(launched(), QStringList());
    QCOMPARE(clipboard(), u"before"_s);
    QVERIFY(w.window.isVisible());
}

void tst_RowKeys::lettersInTheListGoToTheBox_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("box");

    const Qt::KeyboardModifiers none;
    QTest::newRow("letter") << Qt::Key_T << u"t"_s << none << u"paint"_s;
    QTest::newRow("capital") << Qt::Key_T << u"T"_s << Qt::KeyboardModifiers(Qt::ShiftModifier)
                             << u"painT"_s;
    QTest::newRow("Chinese") << Qt::Key_unknown << u"画"_s << none << u"pain画"_s;
    QTest::newRow("AltGr on Windows")
        << Qt::Key_At << u"@"_s << (Qt::ControlModifier | Qt::AltModifier) << u"pain@"_s;
    QTest::newRow("Backspace") << Qt::Key_Backspace << u"\b"_s << none << u"pai"_s;
}

void tst_RowKeys::lettersInTheListGoToTheBox()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, text);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"pain"_s);
    w.settle();
    w.list->setFocus();
    QTest::sendKeyEvent(QTest::Click, w.list, key, text, modifiers);
    QTEST(w.box->text(), "box");
    QVERIFY(w.edit->hasFocus());
    QVERIFY(!w.edit->hasSelectedText());
}

void tst_RowKeys::lettersAfterAClickGoToTheBox()
{
    Window w;
    QVERIFY(w.showActive());
    const QPoint position = w.list->visualItemRect(w.list->item(2)).center();
    QTest::mouseClick(w.list->viewport(), Qt::LeftButton, {}, position);
    QVERIFY(w.list->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), 'n');
    QTest::keyClick(QApplication::focusWidget(), 'o');
    QCOMPARE(w.box->text(), u"no"_s);
}

void tst_RowKeys::otherKeysStayInTheList()
{
    Window w;
    QVERIFY(w.showActive());
    w.list->setFocus();
    QTest::keyClick(w.list, Qt::Key_A, control);
    QTest::keyClick(w.list, Qt::Key_A, alt);
    QTest::keyClick(w.list, Qt::Key_Space);
    QTest::keyClick(w.list, Qt::Key_Delete);
    QTest::keyClick(w.list, Qt::Key_End);
    QCOMPARE(w.list->currentRow(), 7);
    QVERIFY(w.list->hasFocus());
    QCOMPARE(w.box->text(), QString());
}

void tst_RowKeys::altAndDigitStartsAVisibleRow_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("fromList");
    QTest::addColumn<int>("program");
    const Qt::KeyboardModifiers keypad = Qt::KeypadModifier;
    QTest::newRow("first") << Qt::Key_1 << alt << false << 0;
    QTest::newRow("third") << Qt::Key_3 << alt << false << 2;
    QTest::newRow("from the list") << Qt::Key_2 << alt << true << 1;
    QTest::newRow("digit that needs Shift") << Qt::Key_2 << (alt | Qt::ShiftModifier) << false << 1;
    QTest::newRow("keypad") << Qt::Key_2 << (alt | keypad) << false << -1;
    QTest::newRow("with Ctrl") << Qt::Key_2 << (alt | control) << false << -1;
    QTest::newRow("zero") << Qt::Key_0 << alt << false << -1;
}

void tst_RowKeys::altAndDigitStartsAVisibleRow()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(bool, fromList);
    QFETCH(int, program);
    Window w;
    QVERIFY(w.showActive());
    QWidget *focus = fromList ? static_cast<QWidget *>(w.list) : w.edit;
    focus->setFocus();
    QTest::keyClick(focus, key, modifiers);
    QCOMPARE(launched(), program < 0 ? QStringList() : QStringList(programPath(program)));
    QCOMPARE(w.window.isVisible(), program < 0);
}

void tst_RowKeys::altAndDigitCountsFromTheFirstVisibleRow()
{
    Window w;
    w.calc.records = copyRecords(30);
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    const int row = w.list->sizeHintForRow(0);
    QScrollBar *bar = w.list->verticalScrollBar();
    bar->setValue(bar->minimum() + 10 * row + row / 4); // most of the row shows
    QTest::keyClick(w.edit, Qt::Key_1, alt);
    QVERIFY(w.showActive());
    bar->setValue(bar->minimum() + 10 * row + 3 * row / 4); // little of it shows
    QTest::keyClick(w.edit, Qt::Key_2, alt);
    QCOMPARE(w.calc.actions, QList<QVariantMap>({action(u"copy"_s, u"10"_s, u"calc"_s),
                                                 action(u"copy"_s, u"12"_s, u"calc"_s)}));
}

void tst_RowKeys::altAndDigitNeedsAVisibleRow()
{
    Window w;
    w.calc.records = copyRecords(30);
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    const int visible = w.list->viewport()->height() / w.list->sizeHintForRow(0);
    QVERIFY(visible < 8);
    QTest::keyClick(w.edit, Qt::Key(Qt::Key_0 + visible + 2), alt); // after one that is cut
    QVERIFY(w.calc.actions.isEmpty());

    w.calc.records = copyRecords(1);
    w.enter(u"calc 1"_s);
    w.settle();
    QTest::keyClick(w.edit, Qt::Key_2, alt); // no such row
    QVERIFY(w.calc.actions.isEmpty());
    QCOMPARE(w.list->currentRow(), 0);
}

void tst_RowKeys::altAndDigitOnAnInertRowDoesNothing()
{
    Window w;
    w.calc.records = {testRecord(u"hint"_s, action(u"none"_s, u"3"_s, u"calc"_s)),
                      testRecord(u"bare"_s)};
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    QTest::keyClick(w.edit, Qt::Key_1, alt);
    QTest::keyClick(w.edit, Qt::Key_2, alt);
    QVERIFY(w.calc.actions.isEmpty());
    QVERIFY(w.window.isVisible());
}

void tst_RowKeys::altAndDigitOpensAPageLikeEnter()
{
    Window w;
    w.todo.records = numberedRecords(1);
    QVERIFY(w.showActive());
    w.enter(u"todo x"_s);
    w.settle();
    QTest::keyClick(w.edit, Qt::Key_1, alt);
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
}

void tst_RowKeys::digitsShowWhileAltIsHeld()
{
    Window w;
    QVERIFY(w.showActive());
    const auto *list = qobject_cast<ResultList *>(w.list);
    QVERIFY(list);
    QVERIFY(!list->areDigitsVisible());
    QTest::keyPress(w.edit, Qt::Key_Alt, alt);
    QVERIFY(list->areDigitsVisible());
    QTest::keyRelease(w.edit, Qt::Key_Alt);
    QVERIFY(!list->areDigitsVisible());

    QTest::keyPress(w.edit, Qt::Key_Alt, alt | control); // part of a hotkey
    QVERIFY(!list->areDigitsVisible());
    QTest::keyPress(w.edit, Qt::Key_Alt, alt);
    QVERIFY(list->areDigitsVisible());
    w.window.hide();
    w.settle();
    QVERIFY(!list->areDigitsVisible());
}

void tst_RowKeys::controlCCopiesTheRow_data()
{
    QTest::addColumn<QVariantMap>("record");
    QTest::addColumn<QString>("copied");

    const auto row = [](const char *name, const QVariantMap &itsAction, const QString &path,
                        const QString &copied) {
        QTest::newRow(name) << testRecord(u"r"_s, itsAction, path) << copied;
    };
    row("value", action(u"copy"_s, u"1/3"_s, u"calc"_s), {}, u"1/3"_s);
    row("address", action(u"openUrl"_s, u"https://a.example/b?c"_s), {},
        u"https://a.example/b?c"_s);
    row("file", action(u"openFile"_s, u"/a/b c"_s, u"calc"_s), {},
        QDir::toNativeSeparators(u"/a/b c"_s));
    row("folder", action(u"navigate"_s, u"/a/b"_s, u"calc"_s), {},
        QDir::toNativeSeparators(u"/a/b"_s));
    row("program", {}, u"/a.link"_s, QDir::toNativeSeparators(u"/a.link"_s));
    row("command of a program", {}, u"notepad"_s, u"notepad"_s);
    row("program with an action", action(u"launch"_s, u"/a.link"_s, u"calc"_s), u"/a.link"_s,
        QDir::toNativeSeparators(u"/a.link"_s));
    row("inert row", action(u"none"_s, u"3"_s, u"calc"_s), {}, u"before"_s);
    row("row without an action", {}, {}, u"before"_s);
}

void tst_RowKeys::controlCCopiesTheRow()
{
    QFETCH(QVariantMap, record);
    Window w;
    w.calc.records = {testRecord(u"first"_s), record};
    QVERIFY(w.showActive());
    w.enter(u"calc x"_s);
    w.settle();
    w.list->setCurrentRow(1);
    for (QWidget *focus : {static_cast<QWidget *>(w.edit), static_cast<QWidget *>(w.list)}) {
        QGuiApplication::clipboard()->setText(u"before"_s);
        focus->setFocus();
        QTest::keyClick(focus, Qt::Key_C, control);
        QTEST(clipboard(), "copied");
    }
    QVERIFY(w.window.isVisible());
    QVERIFY(w.calc.actions.isEmpty());
}

void tst_RowKeys::controlCCopiesTheSelectionOfTheBox()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    w.edit->setSelection(0, 2);
    QTest::keyClick(w.edit, Qt::Key_C, control);
    QCOMPARE(clipboard(), u"pa"_s);
}

void tst_RowKeys::controlDPinsAndUnpins()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    w.settle();
    QTest::keyClick(w.edit, Qt::Key_D, control);
    QVERIFY(w.launcher.isPinned(programPath(2)));
    QCOMPARE(w.launcher.pinnedApps().last().toMap().value(u"name"_s).toString(), u"Paint"_s);
    w.list->setFocus();
    QTest::keyClick(w.list, Qt::Key_D, control);
    QVERIFY(!w.launcher.isPinned(programPath(2)));
    QVERIFY(w.window.isVisible());
}

void tst_RowKeys::controlDWithoutAPathDoesNothing()
{
    Window w;
    w.calc.records = {testRecord(u"3"_s, action(u"copy"_s, u"3"_s, u"calc"_s))};
    QVERIFY(w.showActive());
    w.enter(u"calc 12"_s);
    const qsizetype pins = w.launcher.pinnedApps().size();
    QTest::keyClick(w.edit, Qt::Key_Home);
    QTest::keyClick(w.edit, Qt::Key_D, control);
    QCOMPARE(w.launcher.pinnedApps().size(), pins);
    QCOMPARE(w.box->text(), u"calc 12"_s); // the edit would delete a letter
}

void tst_RowKeys::controlEnterShowsTheFileInItsFolder_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("file") << u"openFile"_s << Qt::Key_Return;
    QTest::newRow("folder") << u"navigate"_s << Qt::Key_Return;
    QTest::newRow("program") << QString() << Qt::Key_Return;
    QTest::newRow("keypad") << u"openFile"_s << Qt::Key_Enter;
}

void tst_RowKeys::controlEnterShowsTheFileInItsFolder()
{
    QFETCH(QString, type);
    QFETCH(Qt::Key, key);
    const QString path = testhome::writeFile(u"folder/file"_s, "text");
    Window w;
    w.calc.records = {type.isEmpty() ? testRecord(u"r"_s, {}, path)
                                     : testRecord(u"r"_s, action(type, path, u"calc"_s))};
    QVERIFY(w.showActive());
    w.enter(u"calc x"_s);
    w.settle();
    QTest::keyClick(w.edit, key, key == Qt::Key_Enter ? control | Qt::KeypadModifier : control);
    QCOMPARE(fakePlatform().filesShownInFolder, QStringList(path));
    QVERIFY(w.calc.actions.isEmpty());
    QCOMPARE(launched(), QStringList());
    QVERIFY(!w.window.isVisible());
}

void tst_RowKeys::controlEnterKeepsTheWindowIfItFails()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s); // its path is that of no file
    QTest::keyClick(w.edit, Qt::Key_Return, control);
    QCOMPARE(fakePlatform().filesShownInFolder, QStringList());
    QCOMPARE(launched(), QStringList());
    QVERIFY(w.window.isVisible());
}

void tst_RowKeys::controlEnterOnAnInertRowDoesNothing()
{
    Window w;
    w.calc.records = {testRecord(u"hint"_s, action(u"none"_s, u"3"_s, u"calc"_s))};
    QVERIFY(w.showActive());
    w.enter(u"calc x"_s);
    QTest::keyClick(w.edit, Qt::Key_Return, control);
    QVERIFY(w.calc.actions.isEmpty());
    QVERIFY(w.window.isVisible());
}

void tst_RowKeys::controlEnterWithoutAFileIsEnter()
{
    Window w;
    const QVariantMap copy = action(u"copy"_s, u"3"_s, u"calc"_s);
    w.calc.records = {testRecord(u"3"_s, copy)};
    QVERIFY(w.showActive());
    w.enter(u"calc 1+2"_s);
    QTest::keyClick(w.edit, Qt::Key_Return, control);
    QCOMPARE(w.calc.actions, QList<QVariantMap>{copy});
}

namespace {

/// A command that adds a task with the text of its arguments.
class TaskPlugin : public FakePlugin, public ArgumentsAction
{
public:
    using FakePlugin::FakePlugin;

    QVariantMap actionForArguments(const QString &args) const override
    {
        const QString title = args.trimmed();
        return title.isEmpty() ? QVariantMap() : action(u"addTask"_s, title, command());
    }

    bool execute(const QVariantMap &action) override
    {
        FakePlugin::execute(action);
        return result;
    }

    bool result = true;
};

class TaskWindow
{
public:
    TaskWindow()
    {
        w.plugins.registerPlugin(tasks);
        w.box->setCommands({u"add"_s, u"calc"_s});
        isActive = w.showActive();
    }

    QStringList added() const
    {
        QStringList titles;
        for (const QVariantMap &map : std::as_const(tasks->actions)) {
            titles.append(map.value(u"data"_s).toString());
        }
        return titles;
    }

    Window w;
    TaskPlugin *tasks = new TaskPlugin(u"add"_s, FakePlugin::View::Page, &w.plugins);
    bool isActive = false;
};

} // namespace

void tst_RowKeys::controlEnterAddsATask()
{
    TaskWindow t;
    QVERIFY(t.isActive);
    t.w.enter(u"add buy milk"_s);
    QTest::keyClick(t.w.edit, Qt::Key_Return, control);
    QCOMPARE(t.added(), QStringList(u"buy milk"_s));
    QVERIFY(t.w.window.isVisible());
    QVERIFY(t.w.isListCurrent());
    QCOMPARE(t.w.box->text(), u"add "_s);
}

void tst_RowKeys::controlEnterAddsTheWholeTextAsATask()
{
    TaskWindow t;
    QVERIFY(t.isActive);
    t.w.enter(u"add buy mil"_s);
    QTest::keyClicks(t.w.edit, u"k"_s); // its search is pending
    QVERIFY(t.w.searchTimer().isActive());
    QTest::keyClick(t.w.edit, Qt::Key_Return, control);
    QCOMPARE(t.added(), QStringList(u"buy milk"_s));
}

void tst_RowKeys::controlEnterAddsATaskWithItsPageOpen()
{
    TaskWindow t;
    QVERIFY(t.isActive);
    t.w.enter(u"add "_s);
    t.w.launchCurrent();
    QCOMPARE(t.w.stack->currentWidget(), t.tasks->page);
    t.w.enter(u"add buy milk"_s);
    QTest::keyClick(t.w.edit, Qt::Key_Return, control);
    QCOMPARE(t.added(), QStringList(u"buy milk"_s));
    QCOMPARE(t.w.stack->currentWidget(), t.tasks->page);
}

void tst_RowKeys::controlEnterKeepsTheTextIfTheTaskIsNotAdded()
{
    TaskWindow t;
    QVERIFY(t.isActive);
    t.tasks->result = false;
    t.w.enter(u"add buy milk"_s);
    QTest::keyClick(t.w.edit, Qt::Key_Return, control);
    QCOMPARE(t.w.box->text(), u"add buy milk"_s);
    QVERIFY(t.w.window.isVisible());
}

void tst_RowKeys::controlEnterAddsNoTaskTwice()
{
    TaskWindow t;
    QVERIFY(t.isActive);
    t.w.settings.setPluginAutoEnter(true);
    t.w.enter(u"add buy milk"_s);
    QTest::keyClick(t.w.edit, Qt::Key_Return, control);
    QTest::keyClick(t.w.edit, Qt::Key_Return, control);
    QCOMPARE(t.added(), QStringList(u"buy milk"_s));
}

void tst_RowKeys::controlEnterOpensNoPage()
{
    TaskWindow t;
    QVERIFY(t.isActive);
    t.w.settings.setPluginAutoEnter(true);
    t.w.enter(u"add buy mil"_s);
    QTest::keyClicks(t.w.edit, u"k"_s); // its search is pending
    QTest::keyClick(t.w.edit, Qt::Key_Return, control);
    QCOMPARE(t.w.box->text(), u"add "_s);
    QVERIFY(!t.w.searchTimer().isActive());
    QVERIFY(t.w.isListCurrent());
    QVERIFY(t.w.edit->hasFocus());
}

void tst_RowKeys::tabCompletesTheArguments()
{
    Window w;
    QVariantMap first = testRecord(u"first"_s, action(u"copy"_s, u"1"_s, u"calc"_s));
    setRecordCompletion(first, u"one "_s);
    QVariantMap inert = testRecord(u"second"_s, action(u"none"_s, {}, u"calc"_s));
    setRecordCompletion(inert, u"two"_s);
    w.calc.records = {first, inert, testRecord(u"third"_s, action(u"copy"_s, u"3"_s, u"calc"_s))};
    QVERIFY(w.showActive());
    w.enter(u"calc o"_s);
    w.settle();
    QTest::keyClick(w.edit, Qt::Key_Tab);
    QCOMPARE(w.box->text(), u"calc one "_s);
    QVERIFY(w.edit->hasFocus());
    w.search();
    w.list->setCurrentRow(1);
    QTest::keyClick(w.edit, Qt::Key_Tab);
    QCOMPARE(w.box->text(), u"calc two"_s);
    w.search();
    w.list->setCurrentRow(2);
    QTest::keyClick(w.edit, Qt::Key_Tab);
    QCOMPARE(w.box->text(), u"calc two"_s);
    QVERIFY(!w.edit->hasFocus());
}

void tst_RowKeys::tabEntersTheFolder()
{
    FolderWindow f;
    QVERIFY(f.w.showActive());
    f.list(root(), u"a"_s);
    QTest::keyClick(f.w.edit, Qt::Key_Tab);
    QCOMPARE(f.w.box->text(), "cd "_L1 + root() + "/a/"_L1);
    QVERIFY(f.w.edit->hasFocus());
    QTRY_COMPARE(f.w.rows().value(1), u"b\nFolder"_s);
    QTest::keyClicks(f.w.edit, u"b"_s);
    f.w.search();
    QCOMPARE(f.w.rows().value(1), u"c\nFolder"_s);

    // The first row is the folder itself.
    f.list(root() + "/a"_L1, u"Open a"_s);
    QTest::keyClick(f.w.edit, Qt::Key_Tab);
    QCOMPARE(f.w.box->text(), "cd "_L1 + root() + "/a/"_L1);
    QVERIFY(f.w.window.isVisible());
}

void tst_RowKeys::tabEntersAFolderWithABlankAtTheEnd()
{
    FolderWindow f;
    if (!QDir().mkpath(root() + "/end "_L1) || !QDir(root()).entryList().contains(u"end "_s)) {
        QSKIP("The system has no such names.");
    }
    testhome::writeFile(u"home/end /inner"_s, "text");
    QVERIFY(f.w.showActive());
    f.list(root(), u"end "_s);
    QTest::keyClick(f.w.edit, Qt::Key_Tab);
    f.w.search();
    QCOMPARE(f.w.rows().value(1).section(u'\n', 0, 0), u"inner"_s);
}

void tst_RowKeys::tabInTheRootKeepsItsOneSeparator()
{
    FolderWindow f;
    QVERIFY(f.w.showActive());
    const QString root = QDir::rootPath();
    f.w.enter("cd "_L1 + root);
    QTest::keyClick(f.w.edit, Qt::Key_Tab);
    QCOMPARE(f.w.box->text(), "cd "_L1 + root);
}

void tst_RowKeys::tabStaysOnOtherRows_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("row");
    QTest::newRow("file in a folder") << u"cd ~/a"_s << u"file.txt"_s;
    QTest::newRow("message") << u"cd ~/a/file.txt"_s << u"Directory does not exist"_s;
    QTest::newRow("program") << u"paint"_s << u"Paint"_s;
    QTest::newRow("folder of another command") << u"calc x"_s << u"folder"_s;
}

void tst_RowKeys::tabStaysOnOtherRows()
{
    QFETCH(QString, text);
    QFETCH(QString, row);
    FolderWindow f;
    f.w.calc.records = {testRecord(u"folder"_s, action(u"navigate"_s, root(), u"calc"_s))};
    QVERIFY(f.w.showActive());
    f.w.enter(text);
    f.w.settle();
    f.w.list->setCurrentItem(f.w.list->findItems(row + u'\n', Qt::MatchStartsWith).value(0));
    const QString before = f.w.box->text();
    QTest::keyClick(f.w.edit, Qt::Key_Tab);
    QCOMPARE(f.w.box->text(), before);
    QVERIFY(!f.w.edit->hasFocus());
}

void tst_RowKeys::enterOnAFolderOpensItAsBefore()
{
    FolderWindow f;
    QVERIFY(f.w.showActive());
    f.list(root(), u"a"_s);
    QTest::keyClick(f.w.edit, Qt::Key_Return);
    QCOMPARE(fakePlatform().openedFolders, QStringList(root() + "/a"_L1));
    QVERIFY(!f.w.window.isVisible());
}

void tst_RowKeys::altUpListsTheParent()
{
    FolderWindow f;
    QVERIFY(f.w.showActive());
    f.list(root() + "/a/b"_L1, u"c"_s);
    QTest::keyClick(f.w.edit, Qt::Key_Up, alt);
    QCOMPARE(f.w.box->text(), "cd "_L1 + root() + "/a/"_L1);
    QTRY_COMPARE(f.w.rows().value(0).section(u'\n', 0, 0), u"Open a"_s);
}

void tst_RowKeys::altUpTwiceGoesTwoFoldersUp()
{
    FolderWindow f;
    QVERIFY(f.w.showActive());
    f.list(root() + "/a/b"_L1, u"c"_s);
    QTest::keyClick(f.w.edit, Qt::Key_Up, alt);
    QTest::keyClick(f.w.edit, Qt::Key_Up, alt); // before the first folder is listed
    QCOMPARE(f.w.box->text(), "cd "_L1 + root() + u'/');
}

void tst_RowKeys::altUpInTheRootStaysThere()
{
    FolderWindow f;
    QVERIFY(f.w.showActive());
    const QString root = QDir::rootPath();
    f.w.enter("cd "_L1 + root);
    QTest::keyClick(f.w.edit, Qt::Key_Up, alt);
    QCOMPARE(f.w.box->text(), "cd "_L1 + root);
}

void tst_RowKeys::altUpElsewhereDoesNothing()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"pa"_s);
    QTest::keyClick(w.edit, Qt::Key_Up, alt);
    QCOMPARE(w.box->text(), u"pa"_s);
}

void tst_RowKeys::pageTakesNoRowKeys()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QTest::keyClick(w.edit, Qt::Key_PageDown);
    QTest::keyClick(w.edit, Qt::Key_End, control);
    QTest::keyClick(w.edit, Qt::Key_C, control);
    QTest::keyClick(w.edit, Qt::Key_D, control);
    QTest::keyClick(w.edit, Qt::Key_2, alt);
    QCOMPARE(w.list->currentRow(), 0);
    QCOMPARE(clipboard(), u"before"_s);
    QVERIFY(!w.launcher.isPinned(programPath(0)));
    QCOMPARE(launched(), QStringList());
}

VASKEL_TEST(tst_RowKeys, QApplication)
#include "tst_RowKeys.moc"
