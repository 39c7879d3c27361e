// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QAccessible>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace windowtest;

/// User actions on the rows and their effects.
class tst_MainWindowRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void enterOpensThePageOfACommand_data();
    void enterOpensThePageOfACommand();
    void enterRunsTheActionOfACommandsRow();
    void enterIgnoresAnInertRow();
    void enterLaunchesThePathOfAnInertRow();
    void enterOnAnActionWithoutATypeHidesTheWindow();
    void enterOnAnEmptyRecordDoesNothing();
    void enterPrefersTheActionToThePath();
    void enterOnAnUnknownCommandSearchesTheWeb();
    void enterLaunchesTheApplication();
    void enterWithoutAMatchSearchesTheWeb();
    void enterOnTheEmptyBoxLaunchesFromTheFullList();
    void enterOnTheEmptyBoxDoesNothingWithoutRows();
    void enterHidesTheWindowEvenOnFailure();
    void enterClearsNothing();
    void enterWithinTheDelayUsesTheEarlierRows();
    void enterInTheListDoesNothing();
    void enterUsesTheCurrentRow();

    void clicks_data();
    void clicks();
    void clickOnAnApplicationTakesTheClickedRow();

    void moveSelectionClampsAtBothEnds_data();
    void moveSelectionClampsAtBothEnds();
    void moveSelectionFromNoRowStartsAtTheFirst();
    void moveSelectionNeedsRows();
    void moveSelectionNeedsTheList();
    void shortcutsMoveTheRow_data();
    void shortcutsMoveTheRow();
    void shortcutsMoveTheRowWithTheFocusInTheList();
    void shortcutsAreInOrder();

    void menuPinsAndUnpins();
    void menuOpensAtThePointer();
    void dismissedMenuChangesNothing();
    void menuNeedsARowWithAPath();
    void menuPinsARowOfACommand();
    void menuPinsTheTitleBeforeTheName();
    void menuChecksAgainWhetherThePathIsPinned();
    void menuOutlivesItsRow();

    void listKeepsTheFocusAfterANewSearch();
    void listKeepsTheFocusWhenAPinChanges();
    void listWithoutRowsGivesTheFocusToTheBox();

    void rowsReadTitleAndSubtitleAloud();
};

void tst_MainWindowRows::enterOpensThePageOfACommand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("command") << u"todo "_s << u"todo"_s << true;
    QTest::newRow("command with arguments") << u"todo buy milk"_s << u"todo"_s << true;
    QTest::newRow("alias") << u"user "_s << u"user"_s << true;
    QTest::newRow("capitals") << u"TODO x"_s << u"todo"_s << true;
    QTest::newRow("plugin that is switched off") << u"todo "_s << u"todo"_s << false;
}

void tst_MainWindowRows::enterOpensThePageOfACommand()
{
    QFETCH(QString, text);
    QFETCH(QString, command);
    QFETCH(bool, enabled);

    Window w;
    QVERIFY(w.showActive());
    w.settings.setPluginEnabled(u"todo"_s, enabled);
    FakePlugin &plugin = command == "todo"_L1 ? w.todo : w.set;
    plugin.records = {testRecord(u"r"_s, action(u"copy"_s, u"3"_s, u"calc"_s))};
    w.enter(text);
    QVERIFY(w.isListCurrent());
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(w.stack->currentWidget(), plugin.page);
    QCOMPARE(plugin.viewCommands, QStringList(command));
    QVERIFY(w.calc.actions.isEmpty());
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowRows::enterRunsTheActionOfACommandsRow()
{
    Window w;
    QVERIFY(w.showActive());
    const QVariantMap copy = action(u"copy"_s, u"3"_s, u"calc"_s);
    w.calc.records = {testRecord(u"3"_s, copy)};
    w.enter(u"calc 1+2"_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(w.calc.actions, QList<QVariantMap>{copy});
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterIgnoresAnInertRow()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = {testRecord(u"hint"_s, action(u"none"_s, u"3"_s, u"calc"_s)),
                      testRecord(u"bare"_s)};
    w.enter(u"calc "_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    w.moveSelection(1);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QVERIFY(w.calc.actions.isEmpty());
    QCOMPARE(launched(), QStringList());
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowRows::enterLaunchesThePathOfAnInertRow()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = {testRecord(u"r"_s, action(u"none"_s, {}, u"calc"_s), u"/a.link"_s)};
    w.enter(u"calc "_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QVERIFY(w.calc.actions.isEmpty());
    QCOMPARE(launched(), QStringList(u"/a.link"_s));
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterOnAnActionWithoutATypeHidesTheWindow()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = {testRecord(u"r"_s, QVariantMap{{u"plugin"_s, u"calc"_s}}, u"/a.link"_s)};
    w.enter(u"calc "_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QVERIFY(w.calc.actions.isEmpty());
    QCOMPARE(launched(), QStringList());
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterOnAnEmptyRecordDoesNothing()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = {QVariantMap()};
    w.enter(u"calc "_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowRows::enterPrefersTheActionToThePath()
{
    Window w;
    QVERIFY(w.showActive());
    const QVariantMap launch = action(u"launch"_s, u"/a.link"_s, u"calc"_s);
    w.calc.records = {testRecord(u"r"_s, launch, u"/a.link"_s)};
    w.enter(u"calc "_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(w.calc.actions, QList<QVariantMap>{launch});
    QCOMPARE(launched(), QStringList());
}

void tst_MainWindowRows::enterOnAnUnknownCommandSearchesTheWeb()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"xyz abc"_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(w.urls.addresses, QStringList(u"https://www.bing.com/search?q=xyz%20abc"_s));
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterLaunchesTheApplication()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched(), QStringList(programPath(2)));
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterWithoutAMatchSearchesTheWeb()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"xyz"_s);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(w.urls.addresses, QStringList(u"https://www.bing.com/search?q=xyz"_s));
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterOnTheEmptyBoxLaunchesFromTheFullList()
{
    Window w;
    QVERIFY(w.showActive());
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched(), QStringList(programPath(0)));
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterOnTheEmptyBoxDoesNothingWithoutRows()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched(), QStringList());
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowRows::enterHidesTheWindowEvenOnFailure()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = {testRecord(u"r"_s, action(u"no such thing"_s, u"x"_s, u"no such plugin"_s))};
    w.enter(u"calc "_s);
    w.launchCurrent();
    QVERIFY(!w.window.isVisible());

    QVERIFY(w.showActive());
    w.calc.records = {testRecord(u"r"_s, {}, u"/no/such/program"_s)};
    w.search();
    w.launchCurrent();
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterClearsNothing()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"pa"_s);
    const QStringList rows = w.rows();
    QTest::keyClick(w.edit, Qt::Key_Return);
    QVERIFY(!w.window.isVisible());
    QVERIFY(w.showActive());
    QCOMPARE(w.box->text(), u"pa"_s);
    QCOMPARE(w.rows(), rows);
}

void tst_MainWindowRows::enterWithinTheDelayUsesTheEarlierRows()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    w.box->setText(u"notepad"_s);
    QVERIFY(w.searchTimer().isActive());
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched(), QStringList(programPath(2)));
    QVERIFY(!w.window.isVisible());

    // The pending search still runs while the window is hidden.
    QVERIFY(w.searchTimer().isActive());
    QCOMPARE(w.currentTitle(), u"Paint"_s);
    QTRY_COMPARE(w.currentTitle(), u"Notepad"_s);
    QVERIFY(!w.window.isVisible());
}

void tst_MainWindowRows::enterInTheListDoesNothing()
{
    Window w;
    QVERIFY(w.showActive());
    w.list->setFocus();
    QTest::keyClick(w.list, Qt::Key_Return);
    QCOMPARE(launched(), QStringList());
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowRows::enterUsesTheCurrentRow()
{
    Window w;
    QVERIFY(w.showActive());
    QTest::keyClick(w.edit, Qt::Key_Down);
    QTest::keyClick(w.edit, Qt::Key_Down);
    QTest::keyClick(w.edit, Qt::Key_Return);
    QCOMPARE(launched(), QStringList(programPath(2)));
}

void tst_MainWindowRows::clicks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("requiresDoubleClick");
    QTest::addColumn<bool>("afterOne");
    QTest::addColumn<bool>("afterTwo");

    QTest::newRow("application, double click required") << u"paint"_s << true << false << true;
    QTest::newRow("application, single click") << u"paint"_s << false << true << true;
    QTest::newRow("command, double click required") << u"calc "_s << true << false << true;
    QTest::newRow("command, single click") << u"calc "_s << false << false << true;
    QTest::newRow("web row, double click required") << u"xyz"_s << true << false << true;
    QTest::newRow("web row, single click") << u"xyz"_s << false << false << false;
}

void tst_MainWindowRows::clicks()
{
    QFETCH(QString, text);
    QFETCH(bool, requiresDoubleClick);
    QFETCH(bool, afterOne);
    QFETCH(bool, afterTwo);

    Window w;
    w.calc.records = {testRecord(u"r"_s, action(u"copy"_s, u"3"_s, u"calc"_s), u"/a.link"_s)};
    w.settings.setAppLaunchRequiresDoubleClick(requiresDoubleClick);
    QVERIFY(w.showActive());
    w.enter(text);
    w.settle();
    const auto effects = [&w] {
        return int(launched().size() + w.calc.actions.size() + w.urls.addresses.size());
    };

    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    QTest::mouseClick(w.list->viewport(), Qt::LeftButton, {}, position);
    QCOMPARE(effects(), afterOne ? 1 : 0);
    QCOMPARE(w.window.isVisible(), !afterOne);
    if (!afterOne) {
        QTest::mouseDClick(w.list->viewport(), Qt::LeftButton, {}, position);
        QCOMPARE(effects(), afterTwo ? 1 : 0);
        QCOMPARE(w.window.isVisible(), !afterTwo);
    } else {
        // The second click of a double click has no effect.
        Q_EMIT w.list->itemDoubleClicked(w.list->item(0));
        QCOMPARE(effects(), 1);
    }
}

void tst_MainWindowRows::clickOnAnApplicationTakesTheClickedRow()
{
    Window w;
    w.settings.setAppLaunchRequiresDoubleClick(false);
    QVERIFY(w.showActive());
    const QPoint position = w.list->visualItemRect(w.list->item(3)).center();
    QTest::mouseClick(w.list->viewport(), Qt::LeftButton, {}, position);
    QCOMPARE(launched(), QStringList(programPath(3)));
}

void tst_MainWindowRows::moveSelectionClampsAtBothEnds_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("delta");
    QTest::addColumn<int>("to");
    QTest::newRow("down") << 0 << 1 << 1;
    QTest::newRow("up") << 5 << -1 << 4;
    QTest::newRow("several down") << 1 << 4 << 5;
    QTest::newRow("up from the first stays") << 0 << -1 << 0;
    QTest::newRow("down from the last stays") << 7 << 1 << 7;
    QTest::newRow("far down ends at the last") << 3 << 100 << 7;
    QTest::newRow("far up ends at the first") << 3 << -100 << 0;
}

void tst_MainWindowRows::moveSelectionClampsAtBothEnds()
{
    QFETCH(int, from);
    QFETCH(int, delta);
    Window w;
    w.list->setCurrentRow(from);
    w.moveSelection(delta);
    QTEST(w.list->currentRow(), "to");
}

void tst_MainWindowRows::moveSelectionFromNoRowStartsAtTheFirst()
{
    Window w;
    w.list->setCurrentRow(-1);
    w.moveSelection(1);
    QCOMPARE(w.list->currentRow(), 0);
}

void tst_MainWindowRows::moveSelectionNeedsRows()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    w.moveSelection(1);
    w.moveSelection(-1);
    QCOMPARE(w.list->currentRow(), -1);
}

void tst_MainWindowRows::moveSelectionNeedsTheList()
{
    Window w;
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.moveSelection(1);
    QCOMPARE(w.list->currentRow(), 0);
}

void tst_MainWindowRows::shortcutsMoveTheRow_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("to");
    const Qt::KeyboardModifiers none;
    const Qt::KeyboardModifiers control = Qt::ControlModifier;
    QTest::newRow("down") << Qt::Key_Down << none << 4;
    QTest::newRow("up") << Qt::Key_Up << none << 2;
    QTest::newRow("Ctrl+N") << Qt::Key_N << control << 4;
    QTest::newRow("Ctrl+P") << Qt::Key_P << control << 2;
}

void tst_MainWindowRows::shortcutsMoveTheRow()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    Window w;
    QVERIFY(w.showActive());
    w.list->setCurrentRow(3);
    QTest::keyClick(w.edit, key, modifiers);
    QTEST(w.list->currentRow(), "to");
    QCOMPARE(w.box->text(), QString());
}

void tst_MainWindowRows::shortcutsMoveTheRowWithTheFocusInTheList()
{
    Window w;
    QVERIFY(w.showActive());
    w.list->setFocus();
    QTest::keyClick(w.list, Qt::Key_Down);
    QCOMPARE(w.list->currentRow(), 1);
}

void tst_MainWindowRows::shortcutsAreInOrder()
{
    const Window w;
    QStringList keys;
    const auto shortcuts =
        w.window.findChildren<QShortcut *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QShortcut *shortcut : shortcuts) {
        keys.append(shortcut->key().toString(QKeySequence::PortableText));
        QCOMPARE(shortcut->context(), Qt::WindowShortcut);
    }
    QCOMPARE(keys, QStringList({u"Down"_s, u"Up"_s, u"Ctrl+N"_s, u"Ctrl+P"_s, u"Esc"_s}));
}

void tst_MainWindowRows::menuPinsAndUnpins()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    w.settle();
    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    QWidget *viewport = w.list->viewport();

    QCOMPARE(w.useMenu(viewport, position, u"Pin to Start"_s), QStringList(u"Pin to Start"_s));
    QVERIFY(w.launcher.isPinned(programPath(2)));
    const QVariantMap pin = w.launcher.pinnedApps().last().toMap();
    QCOMPARE(pin.value(u"name"_s).toString(), u"Paint"_s);

    QCOMPARE(w.useMenu(viewport, position, u"Unpin from Start"_s),
             QStringList(u"Unpin from Start"_s));
    QVERIFY(!w.launcher.isPinned(programPath(2)));
    QVERIFY(w.window.isVisible());
}

void tst_MainWindowRows::menuOpensAtThePointer()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.list->viewport()->pos() != QPoint()); // so the list would give another position
    const QPoint position = w.list->visualItemRect(w.list->item(1)).center();
    w.useMenu(w.list->viewport(), position, {});
    QCOMPARE(w.menuPosition, w.list->viewport()->mapToGlobal(position));
}

void tst_MainWindowRows::dismissedMenuChangesNothing()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    w.settle();
    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    QCOMPARE(w.useMenu(w.list->viewport(), position, {}), QStringList(u"Pin to Start"_s));
    QVERIFY(!w.launcher.isPinned(programPath(2)));
}

void tst_MainWindowRows::menuNeedsARowWithAPath()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"xyz"_s);
    w.settle();
    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    QCOMPARE(w.useMenu(w.list->viewport(), position, {}), QStringList());
    const QPoint below(5, w.list->viewport()->height() - 1);
    QVERIFY(!w.list->itemAt(below));
    QCOMPARE(w.useMenu(w.list->viewport(), below, {}), QStringList());
}

void tst_MainWindowRows::menuPinsARowOfACommand()
{
    Window w;
    w.calc.records = {testRecord(u"r"_s, action(u"copy"_s, u"3"_s, u"calc"_s), u"/a.link"_s)};
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    QCOMPARE(w.useMenu(w.list->viewport(), position, u"Pin to Start"_s),
             QStringList(u"Pin to Start"_s));
    QVERIFY(w.launcher.isPinned(u"/a.link"_s));
}

void tst_MainWindowRows::menuPinsTheTitleBeforeTheName()
{
    Window w;
    w.calc.records = {QVariantMap{{u"title"_s, u"title"_s},
                                  {u"name"_s, u"name"_s},
                                  {u"icon"_s, u"/i.png"_s},
                                  {u"path"_s, u"/a.link"_s}}};
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    w.useMenu(w.list->viewport(), position, u"Pin to Start"_s);
    const QVariantMap pin = w.launcher.pinnedApps().last().toMap();
    QCOMPARE(pin.value(u"name"_s).toString(), u"title"_s);
    QCOMPARE(pin.value(u"icon"_s).toString(), u"/i.png"_s);
}

void tst_MainWindowRows::menuChecksAgainWhetherThePathIsPinned()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    w.settle();
    // The path is pinned by other means while the menu is open.
    QTimer::singleShot(0, &w.window,
                       [&w] { w.launcher.pinApp(programPath(2), u"Paint"_s, u"/i.png"_s); });
    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    QCOMPARE(w.useMenu(w.list->viewport(), position, u"Pin to Start"_s),
             QStringList(u"Pin to Start"_s));
    QVERIFY(!w.launcher.isPinned(programPath(2)));
}

void tst_MainWindowRows::menuOutlivesItsRow()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"paint"_s);
    w.settle();
    QTimer::singleShot(0, &w.window, [&w] { w.enter(u"xyz"_s); });
    const QPoint position = w.list->visualItemRect(w.list->item(0)).center();
    w.useMenu(w.list->viewport(), position, u"Pin to Start"_s);
    QCOMPARE(w.currentTitle(), u"Search \"xyz\""_s);
    QVERIFY(w.launcher.isPinned(programPath(2)));
}

void tst_MainWindowRows::listKeepsTheFocusAfterANewSearch()
{
    Window w;
    QVERIFY(w.showActive());
    w.list->setFocus();
    const QSignalSpy focusChanged(qApp, &QApplication::focusChanged);
    w.search();
    w.settle();
    QVERIFY(w.list->hasFocus());
    QCOMPARE(focusChanged.count(), 0); // no other widget had it in between
    QTest::keyClick(w.list, Qt::Key_Down);
    QCOMPARE(w.list->currentRow(), 1);
}

void tst_MainWindowRows::listKeepsTheFocusWhenAPinChanges()
{
    Window w;
    QVERIFY(w.showActive());
    w.list->setFocus();
    const QSignalSpy focusChanged(qApp, &QApplication::focusChanged);
    w.launcher.pinApp(programPath(2), u"Paint"_s, QString());
    w.settle();
    QVERIFY(w.list->hasFocus());
    QCOMPARE(focusChanged.count(), 0);
}

void tst_MainWindowRows::listWithoutRowsGivesTheFocusToTheBox()
{
    Window w;
    QVERIFY(w.showActive());
    w.list->setFocus();
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    w.settle();
    QCOMPARE(w.list->count(), 0);
    QVERIFY(w.edit->hasFocus());
}

void tst_MainWindowRows::rowsReadTitleAndSubtitleAloud()
{
    Window w;
    w.calc.records = {testRecord(u"3"_s)};
    w.enter(u"calc "_s);
    QAccessibleInterface *list = QAccessible::queryAccessibleInterface(w.list);
    QCOMPARE(list->childCount(), 1);
    QCOMPARE(list->child(0)->text(QAccessible::Name), u"3\nabout 3"_s);
}

VASKEL_TEST(tst_MainWindowRows, QApplication)
#include "tst_MainWindowRows.moc"
