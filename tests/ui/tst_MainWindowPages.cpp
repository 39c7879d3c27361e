// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/ManagementIcon.h"
#include "ui/WindowTest.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <tuple>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

/// Records the keys that a widget gets.
class KeyRecorder : public QObject
{
public:
    explicit KeyRecorder(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress) {
            pressed.append(static_cast<QKeyEvent *>(event)->keyCombination());
        }
        return QObject::eventFilter(watched, event);
    }

    QList<QKeyCombination> pressed;
};

} // namespace

/// Opening and closing the pages of plugins.
class tst_MainWindowPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void showsThePageInsteadOfTheList();
    void refusesACommandWithoutAPage_data();
    void refusesACommandWithoutAPage();
    void tellsThePluginTheCommand();
    void opensThePageOfADisabledPlugin();
    void openingKeepsTheTextOfTheBox();
    void openingTwiceKeepsOnePageAndOneConnection();
    void pageStaysInTheStack();
    void destroyedPageIsCreatedAgain();

    void closeSignalShowsTheList();
    void closeSignalChangesNothingElse();
    void closeSignalMovesTheFocusFromThePageToTheBox();

    void searchKeepsThePage_data();
    void searchKeepsThePage();
    void pageOfAnotherCommandStaysUntilTheNextEdit();
    void editOfTheArgumentsQueriesAndKeepsThePage();
    void editOfTheCommandClosesThePage();

    void pageGetsTheKeysOfTheList_data();
    void pageGetsTheKeysOfTheList();
    void escapeAndCloseKeepThePage();
    void managementIconOpensTheUserPage();

    void activateCommandOpensThePage();
    void activateCommandOfAPluginWithoutAPageShowsItsRows();
    void activateCommandOfAnUnknownCommand();
    void activateCommandSearchesAtOnceAndAfterTheDelay();
    void activateCommandReplacesTheText();
};

void tst_MainWindowPages::showsThePageInsteadOfTheList()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QVERIFY(w.todo.page->isVisible());
    QVERIFY(!w.list->isVisible());
}

void tst_MainWindowPages::refusesACommandWithoutAPage_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("plugin without a page") << u"calc"_s;
    QTest::newRow("unknown command") << u"xyz"_s;
    QTest::newRow("no command") << QString();
    QTest::newRow("command with a blank") << u"todo "_s;
}

void tst_MainWindowPages::refusesACommandWithoutAPage()
{
    QFETCH(QString, command);
    Window w;
    QVERIFY(w.showActive());
    const int height = w.window.height();
    QVERIFY(!w.window.openPluginView(command));
    QVERIFY(w.isListCurrent());
    QVERIFY(w.list->isVisible());
    QCOMPARE(w.window.height(), height);
}

void tst_MainWindowPages::tellsThePluginTheCommand()
{
    Window w;
    QVERIFY(w.window.openPluginView(u"User"_s));
    QVERIFY(w.window.openPluginView(u"set"_s));
    QCOMPARE(w.set.viewCommands, QStringList({u"user"_s, u"set"_s}));
}

void tst_MainWindowPages::opensThePageOfADisabledPlugin()
{
    Window w;
    w.settings.setPluginEnabled(u"todo"_s, false);
    QVERIFY(w.window.openPluginView(u"todo"_s));
}

void tst_MainWindowPages::openingKeepsTheTextOfTheBox()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"calc 1"_s);
    const QStringList rows = w.rows();
    QVERIFY(w.window.openPluginView(u"set"_s));
    QCOMPARE(w.box->text(), u"calc 1"_s);
    QCOMPARE(w.rows(), rows);
    QVERIFY(w.edit->hasFocus());
}

void tst_MainWindowPages::openingTwiceKeepsOnePageAndOneConnection()
{
    Window w;
    QCOMPARE(w.todo.closeReceivers(), 0);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.stack->count(), 2);
    QCOMPARE(w.todo.closeReceivers(), 1);
}

void tst_MainWindowPages::pageStaysInTheStack()
{
    Window w;
    QVERIFY(w.window.openPluginView(u"todo"_s));
    const QPointer<QWidget> page = w.todo.page;
    Q_EMIT w.todo.viewCloseRequested();
    QVERIFY(page);
    QVERIFY(w.stack->indexOf(page) > 0);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.stack->currentWidget(), page);
    QCOMPARE(w.stack->count(), 2);
}

void tst_MainWindowPages::destroyedPageIsCreatedAgain()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    delete w.todo.page;
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QVERIFY(w.todo.page->isVisible());
    QCOMPARE(w.stack->count(), 2);
}

void tst_MainWindowPages::closeSignalShowsTheList()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.settle();
    Q_EMIT w.todo.viewCloseRequested();
    QVERIFY(w.isListCurrent());
    QVERIFY(w.stack->isHidden());
    QCOMPARE(w.stack->maximumHeight(), 0);
    QTRY_VERIFY(w.list->isVisible());
    QCOMPARE(w.window.height(), w.fittedHeight());
}

void tst_MainWindowPages::closeSignalChangesNothingElse()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = numberedRecords(3);
    w.enter(u"calc 1"_s);
    w.moveSelection(2);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    Q_EMIT w.todo.viewCloseRequested();
    w.settle();
    QCOMPARE(w.box->text(), u"calc 1"_s);
    QCOMPARE(w.list->count(), 3);
    QCOMPARE(w.list->currentRow(), 2);
    QCOMPARE(w.status->text(), u"calc | CALC"_s);
    QVERIFY(w.edit->hasFocus());
}

void tst_MainWindowPages::closeSignalMovesTheFocusFromThePageToTheBox()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QPushButton back(w.todo.page);
    back.show();
    back.setFocus();
    QVERIFY(back.hasFocus());
    Q_EMIT w.todo.viewCloseRequested();
    w.settle();
    QVERIFY(w.edit->hasFocus());
}

void tst_MainWindowPages::searchKeepsThePage_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("keeps");

    QTest::newRow("same command with arguments") << u"todo"_s << u"todo x"_s << true;
    QTest::newRow("same command without arguments") << u"todo"_s << u"todo "_s << true;
    QTest::newRow("same command after a blank") << u"todo"_s << u" todo"_s << true;
    QTest::newRow("another command") << u"todo"_s << u"calc 1"_s << false;
    QTest::newRow("another command of the same plugin") << u"user"_s << u"set "_s << false;
    QTest::newRow("same command in another case") << u"todo"_s << u"TODO x"_s << false;
    QTest::newRow("page opened in another case") << u"TODO"_s << u"TODO x"_s << true;
    QTest::newRow("unknown command") << u"todo"_s << u"xyz x"_s << false;
    QTest::newRow("no command") << u"todo"_s << u"note"_s << false;
    QTest::newRow("empty box") << u"todo"_s << QString() << false;
}

void tst_MainWindowPages::searchKeepsThePage()
{
    QFETCH(QString, view);
    QFETCH(QString, text);
    QFETCH(bool, keeps);

    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(view));
    QWidget *page = w.stack->currentWidget();
    w.enter(text);
    QCOMPARE(w.stack->currentWidget(), keeps ? page : w.list);
    QCOMPARE(w.stack->isHidden(), !keeps);
    w.settle();
    if (keeps) {
        QCOMPARE(w.window.height(), 460);
        QCOMPARE(w.stack->maximumHeight(), QWIDGETSIZE_MAX);
    } else {
        QCOMPARE(w.window.height(), w.fittedHeight());
    }
}

void tst_MainWindowPages::pageOfAnotherCommandStaysUntilTheNextEdit()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"calc 1"_s);
    QVERIFY(w.window.openPluginView(u"set"_s));
    w.settle();
    QCOMPARE(w.stack->currentWidget(), w.set.page);
    QTest::keyClicks(w.edit, u"2"_s);
    QCOMPARE(w.stack->currentWidget(), w.set.page);
    QTRY_VERIFY(w.isListCurrent());
}

void tst_MainWindowPages::editOfTheArgumentsQueriesAndKeepsThePage()
{
    Window w;
    QVERIFY(w.showActive());
    w.todo.records = numberedRecords(2);
    w.enter(u"todo "_s);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.todo.queries.clear();
    QTest::keyClicks(w.edit, u"milk"_s);
    QTRY_COMPARE(w.todo.queries, QStringList(u"milk"_s));
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QVERIFY(w.todo.page->isVisible());
    QCOMPARE(w.list->count(), 2);
    QVERIFY(w.strip->isHidden());
}

void tst_MainWindowPages::editOfTheCommandClosesThePage()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"todo "_s);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QTest::keyClick(w.edit, Qt::Key_Backspace); // without the blank it is still the command
    w.search();
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QTest::keyClick(w.edit, Qt::Key_Backspace);
    QTRY_VERIFY(w.isListCurrent());
}

void tst_MainWindowPages::pageGetsTheKeysOfTheList_data()
{
    QTest::addColumn<QKeyCombination>("key");
    // The row that the key makes current in a list of three, from the middle one.
    QTest::addColumn<int>("row");

    QTest::newRow("down") << QKeyCombination(Qt::Key_Down) << 2;
    QTest::newRow("up") << QKeyCombination(Qt::Key_Up) << 0;
    QTest::newRow("Ctrl+N") << (Qt::CTRL | Qt::Key_N) << 2;
    QTest::newRow("Ctrl+P") << (Qt::CTRL | Qt::Key_P) << 0;
}

void tst_MainWindowPages::pageGetsTheKeysOfTheList()
{
    QFETCH(const QKeyCombination, key);
    QFETCH(const int, row);
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = numberedRecords(3);
    w.enter(u"calc 1"_s);
    w.moveSelection(1);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.todo.page->setFocusPolicy(Qt::StrongFocus);
    w.todo.page->setFocus();
    KeyRecorder keys(w.todo.page);
    QTest::keyClick(w.todo.page, key.key(), key.keyboardModifiers());
    QVERIFY(keys.pressed.contains(key)); // its modifier may come first
    QCOMPARE(w.list->currentRow(), 1);

    Q_EMIT w.todo.viewCloseRequested();
    w.edit->setFocus();
    QTest::keyClick(w.edit, key.key(), key.keyboardModifiers());
    QCOMPARE(w.list->currentRow(), row);
}

void tst_MainWindowPages::escapeAndCloseKeepThePage()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QTest::keyClick(w.edit, Qt::Key_Escape);
    QVERIFY(!w.window.isVisible());
    QVERIFY(w.showActive());
    QVERIFY(w.todo.page->isVisible());

    w.window.close();
    QVERIFY(!w.window.isVisible());
    QVERIFY(w.showActive());
    QVERIFY(w.todo.page->isVisible());
    QCOMPARE(w.window.height(), 460);
}

void tst_MainWindowPages::managementIconOpensTheUserPage()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"note"_s);
    QTest::mouseClick(w.box->findChild<ManagementIcon *>(), Qt::LeftButton);
    QCOMPARE(w.stack->currentWidget(), w.set.page);
    QCOMPARE(w.set.viewCommands, QStringList(u"user"_s));
    QCOMPARE(w.box->text(), u"note"_s);
}

void tst_MainWindowPages::activateCommandOpensThePage()
{
    Window w;
    w.window.activateCommand(u"todo"_s);
    QVERIFY(w.window.isVisible());
    QCOMPARE(w.box->text(), u"todo "_s);
    QCOMPARE(w.edit->text(), QString());
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QVERIFY(w.edit->hasFocus() || QTest::qWaitFor([&w] { return w.edit->hasFocus(); }));
}

void tst_MainWindowPages::activateCommandOfAPluginWithoutAPageShowsItsRows()
{
    Window w;
    w.calc.records = numberedRecords(2);
    w.window.activateCommand(u"calc"_s);
    QCOMPARE(w.box->text(), u"calc "_s);
    QCOMPARE(w.list->count(), 2);
    QVERIFY(w.isListCurrent());
    QCOMPARE(w.status->text(), u"calc | CALC"_s);
}

void tst_MainWindowPages::activateCommandOfAnUnknownCommand()
{
    Window w;
    w.window.activateCommand(u"xyz"_s);
    QVERIFY(w.window.isVisible());
    QCOMPARE(w.box->text(), u"xyz "_s);
    QCOMPARE(w.edit->text(), u"xyz "_s);
    QCOMPARE(w.status->text(), u"xyz | Unknown command"_s);
    QVERIFY(w.isListCurrent());
}

void tst_MainWindowPages::activateCommandSearchesAtOnceAndAfterTheDelay()
{
    Window w;
    w.todo.records = numberedRecords(2);
    w.enter(u"note"_s);
    w.window.activateCommand(u"todo"_s);
    QCOMPARE(w.todo.queries, QStringList(QString()));
    QVERIFY(w.searchTimer().isActive());
    QTRY_COMPARE(w.todo.queries, QStringList({QString(), QString()}));
    w.settle();
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QCOMPARE(w.window.height(), 460);
    QCOMPARE(w.list->count(), 2);
}

void tst_MainWindowPages::activateCommandReplacesTheText()
{
    Window w;
    w.enter(u"todo milk"_s);
    w.window.activateCommand(u"calc"_s);
    QCOMPARE(w.box->text(), u"calc "_s);
    QVERIFY(w.isListCurrent());
    w.window.activateCommand(u"todo"_s);
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    w.window.activateCommand(u"calc"_s);
    QVERIFY(w.isListCurrent());
}

VASKEL_TEST(tst_MainWindowPages, QApplication)
#include "tst_MainWindowPages.moc"
