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

/// Notes the keys that reach a widget.
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

/// The plugins' pages: how they come and when they go.
class tst_MainWindowPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void opensThePageInPlaceOfTheList();
    void refusesAWordWithoutAPage_data();
    void refusesAWordWithoutAPage();
    void tellsThePluginTheWord();
    void opensThePageOfAPluginThatIsSwitchedOff();
    void openingLeavesTheBoxAlone();
    void openingTwiceKeepsOnePageAndOneConnection();
    void pageStaysInTheStack();
    void pageThatDiedIsMadeAnew();

    void closeSignalGoesBackToTheList();
    void closeSignalLeavesEverythingElseAlone();
    void closeSignalTakesTheFocusFromThePageToTheBox();

    void searchKeepsThePage_data();
    void searchKeepsThePage();
    void pageOfAnotherWordStaysUntilTheNextEdit();
    void editOfTheArgumentsAsksAndKeepsThePage();
    void editOfTheWordClosesThePage();

    void pageHasTheKeysOfTheList_data();
    void pageHasTheKeysOfTheList();
    void escapeAndCloseLeaveThePage();
    void managementIconOpensTheUsersPage();

    void activateCommandOpensThePage();
    void activateCommandOfAPluginWithoutAPageShowsItsRows();
    void activateCommandOfAnUnknownWord();
    void activateCommandSearchesAtOnceAndOnceMore();
    void activateCommandReplacesTheText();
};

void tst_MainWindowPages::opensThePageInPlaceOfTheList()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QVERIFY(w.todo.page->isVisible());
    QVERIFY(!w.list->isVisible());
}

void tst_MainWindowPages::refusesAWordWithoutAPage_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("plugin without a page") << u"calc"_s;
    QTest::newRow("unknown word") << u"xyz"_s;
    QTest::newRow("no word") << QString();
    QTest::newRow("word with a blank") << u"todo "_s;
}

void tst_MainWindowPages::refusesAWordWithoutAPage()
{
    QFETCH(QString, word);
    Window w;
    QVERIFY(w.showActive());
    const int height = w.window.height();
    QVERIFY(!w.window.openPluginView(word));
    QVERIFY(w.isOnList());
    QVERIFY(w.list->isVisible());
    QCOMPARE(w.window.height(), height);
}

void tst_MainWindowPages::tellsThePluginTheWord()
{
    Window w;
    QVERIFY(w.window.openPluginView(u"User"_s));
    QVERIFY(w.window.openPluginView(u"set"_s));
    QCOMPARE(w.set.viewCommands, QStringList({u"user"_s, u"set"_s}));
}

void tst_MainWindowPages::opensThePageOfAPluginThatIsSwitchedOff()
{
    Window w;
    w.settings.setPluginEnabled(u"todo"_s, false);
    QVERIFY(w.window.openPluginView(u"todo"_s));
}

void tst_MainWindowPages::openingLeavesTheBoxAlone()
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

void tst_MainWindowPages::pageThatDiedIsMadeAnew()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    delete w.todo.page;
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QVERIFY(w.todo.page->isVisible());
    QCOMPARE(w.stack->count(), 2);
}

void tst_MainWindowPages::closeSignalGoesBackToTheList()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.settle();
    Q_EMIT w.todo.viewCloseRequested();
    QVERIFY(w.isOnList());
    QVERIFY(w.stack->isHidden());
    QCOMPARE(w.stack->maximumHeight(), 0);
    QTRY_VERIFY(w.list->isVisible());
    QCOMPARE(w.window.height(), w.fittedHeight());
}

void tst_MainWindowPages::closeSignalLeavesEverythingElseAlone()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.rows = numberedRows(3);
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

void tst_MainWindowPages::closeSignalTakesTheFocusFromThePageToTheBox()
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

    QTest::newRow("same word with arguments") << u"todo"_s << u"todo x"_s << true;
    QTest::newRow("same word without arguments") << u"todo"_s << u"todo "_s << true;
    QTest::newRow("same word behind a blank") << u"todo"_s << u" todo"_s << true;
    QTest::newRow("another word") << u"todo"_s << u"calc 1"_s << false;
    QTest::newRow("another word of the same plugin") << u"user"_s << u"set "_s << false;
    QTest::newRow("same word in another case") << u"todo"_s << u"TODO x"_s << false;
    QTest::newRow("page opened in another case") << u"TODO"_s << u"TODO x"_s << true;
    QTest::newRow("unknown word") << u"todo"_s << u"xyz x"_s << false;
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

void tst_MainWindowPages::pageOfAnotherWordStaysUntilTheNextEdit()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"calc 1"_s);
    QTRY_VERIFY(!w.searchTimer().isActive());
    QVERIFY(w.window.openPluginView(u"set"_s));
    w.settle();
    QCOMPARE(w.stack->currentWidget(), w.set.page);
    QTest::keyClicks(w.edit, u"2"_s);
    QCOMPARE(w.stack->currentWidget(), w.set.page);
    QTRY_VERIFY(w.isOnList());
}

void tst_MainWindowPages::editOfTheArgumentsAsksAndKeepsThePage()
{
    Window w;
    QVERIFY(w.showActive());
    w.todo.rows = numberedRows(2);
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

void tst_MainWindowPages::editOfTheWordClosesThePage()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"todo "_s);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QTest::keyClick(w.edit, Qt::Key_Backspace); // the word alone is still the command
    w.search();
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QTest::keyClick(w.edit, Qt::Key_Backspace);
    QTRY_VERIFY(w.isOnList());
}

void tst_MainWindowPages::pageHasTheKeysOfTheList_data()
{
    QTest::addColumn<QKeyCombination>("key");
    QTest::addColumn<int>("row"); // of three, from the middle, once the list has it again

    QTest::newRow("down") << QKeyCombination(Qt::Key_Down) << 2;
    QTest::newRow("up") << QKeyCombination(Qt::Key_Up) << 0;
    QTest::newRow("Ctrl+N") << (Qt::CTRL | Qt::Key_N) << 2;
    QTest::newRow("Ctrl+P") << (Qt::CTRL | Qt::Key_P) << 0;
}

void tst_MainWindowPages::pageHasTheKeysOfTheList()
{
    QFETCH(const QKeyCombination, key);
    QFETCH(const int, row);
    Window w;
    QVERIFY(w.showActive());
    w.calc.rows = numberedRows(3);
    w.enter(u"calc 1"_s);
    w.moveSelection(1);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.todo.page->setFocusPolicy(Qt::StrongFocus);
    w.todo.page->setFocus();
    KeyRecorder keys(w.todo.page);
    QTest::keyClick(w.todo.page, key.key(), key.keyboardModifiers());
    QVERIFY(keys.pressed.contains(key)); // perhaps behind its modifier

    Q_EMIT w.todo.viewCloseRequested();
    w.edit->setFocus();
    QTest::keyClick(w.edit, key.key(), key.keyboardModifiers());
    QCOMPARE(w.list->currentRow(), row);
}

void tst_MainWindowPages::escapeAndCloseLeaveThePage()
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

void tst_MainWindowPages::managementIconOpensTheUsersPage()
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
    w.calc.rows = numberedRows(2);
    w.window.activateCommand(u"calc"_s);
    QCOMPARE(w.box->text(), u"calc "_s);
    QCOMPARE(w.list->count(), 2);
    QVERIFY(w.isOnList());
    QCOMPARE(w.status->text(), u"calc | CALC"_s);
}

void tst_MainWindowPages::activateCommandOfAnUnknownWord()
{
    Window w;
    w.window.activateCommand(u"xyz"_s);
    QVERIFY(w.window.isVisible());
    QCOMPARE(w.box->text(), u"xyz "_s);
    QCOMPARE(w.edit->text(), u"xyz "_s);
    QCOMPARE(w.status->text(), u"xyz | Unknown command"_s);
    QVERIFY(w.isOnList());
}

void tst_MainWindowPages::activateCommandSearchesAtOnceAndOnceMore()
{
    Window w;
    w.todo.rows = numberedRows(2);
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
    QVERIFY(w.isOnList());
    w.window.activateCommand(u"todo"_s);
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    w.window.activateCommand(u"calc"_s);
    QVERIFY(w.isOnList());
}

VASKEL_TEST(tst_MainWindowPages, QApplication)
#include "tst_MainWindowPages.moc"
