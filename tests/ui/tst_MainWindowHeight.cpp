// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/EventCounter.h"
#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

void showRows(Window &w, int count)
{
    w.calc.records = numberedRecords(count);
    w.enter(u"calc "_s);
    w.settle();
}

} // namespace

/// The height of the window follows the list; dragging an edge sets its limit.
class tst_MainWindowHeight : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void withoutRowsItIsTheBaseHeight();
    void withRowsItIsTheBaseHeightAndTheList_data();
    void withRowsItIsTheBaseHeightAndTheList();
    void rowsBeyondTheLimitScrollByPixel();
    void allRowsOfALongListAreEquallyTall();
    void baseHeightIncludesStatusLineAndStrip();
    void emptiedListShrinksTheWindow();
    void searchAloneDoesNotResize();
    void burstOfChangesResizesOnce();
    void searchPaintsOnce_data();
    void searchPaintsOnce();
    void hiddenWindowIsFittedWhenItShows();

    void dragSetsTheLimit();
    void dragMakesTheListSmaller();
    void dragBelowOneRowStillShowsOne();
    void dragWithoutRowsChangesNoLimit();
    void dragOnAPageChangesNoLimit();
    void dragOfAShortListLimitsTheNextList();
    void dragOfTheWidthChangesNoLimit();
    void programsOwnResizeChangesNoLimit();
    void lateAnswersToRequestsChangeNoLimit();
    void repeatedAnswersChangeNoLimit();
    void dragWorksAgainAfterLateAnswers();
    void userCanMakeTheWindowAsSmallAsOneRow();

    void pageTakesTheInitialHeight_data();
    void pageTakesTheInitialHeight();
    void pageFillsTheWindow();
    void pageRemovesTheLimitsOfTheList();
    void dragOfAPageLastsUntilThePageCloses();
    void fitDoesNotResizeAPage();
};

void tst_MainWindowHeight::withoutRowsItIsTheBaseHeight()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    QVERIFY(w.stack->isHidden());
    QCOMPARE(w.stack->minimumHeight(), 0);
    QCOMPARE(w.stack->maximumHeight(), 0);
    QCOMPARE(w.window.height(), w.window.sizeHint().height());
    QVERIFY(w.window.height() < 200);
}

void tst_MainWindowHeight::withRowsItIsTheBaseHeightAndTheList_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("one row") << 1;
    QTest::newRow("two rows") << 2;
    QTest::newRow("four rows") << 4;
}

void tst_MainWindowHeight::withRowsItIsTheBaseHeightAndTheList()
{
    QFETCH(int, count);
    Window w;
    QVERIFY(w.showActive());
    showRows(w, count);
    QVERIFY(w.stack->isVisible());
    QCOMPARE(w.stack->minimumHeight(), w.fullListHeight());
    QCOMPARE(w.stack->maximumHeight(), w.fullListHeight());
    QCOMPARE(w.stack->height(), w.fullListHeight());
    QCOMPARE(w.list->height(), w.fullListHeight());
    QCOMPARE(w.window.height(), w.baseHeight() + w.fullListHeight());
    QCOMPARE(w.list->verticalScrollBar()->maximum(), 0);
}

void tst_MainWindowHeight::rowsBeyondTheLimitScrollByPixel()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 100);
    QCOMPARE(w.window.height(), 460);
    QCOMPARE(w.stack->height(), 460 - w.baseHeight());
    QVERIFY(w.list->verticalScrollBar()->maximum() > 0);
    QCOMPARE(w.list->verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
    w.list->verticalScrollBar()->setValue(1);
    QCOMPARE(w.list->visualItemRect(w.list->item(0)).top(), -1);
}

void tst_MainWindowHeight::allRowsOfALongListAreEquallyTall()
{
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = numberedRecords(50);
    w.calc.records.insert(3, testRecord(u"记事本"_s));
    w.enter(u"calc "_s);
    w.settle();
    QVERIFY(w.list->uniformItemSizes());
    for (int index = 0; index < w.list->count(); ++index) {
        QCOMPARE(w.list->visualItemRect(w.list->item(index)).height(), w.list->sizeHintForRow(0));
    }
}

void tst_MainWindowHeight::baseHeightIncludesStatusLineAndStrip()
{
    Window w;
    QVERIFY(w.showActive());
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    w.settle();
    const int withStrip = w.window.height();
    w.launcher.unpinApp(programPath(1));
    w.launcher.unpinApp(programPath(5));
    w.settle();
    const int bare = w.window.height();
    QVERIFY(bare < withStrip);

    showRows(w, 1);
    QVERIFY(w.window.height() > bare + w.fullListHeight());
    QCOMPARE(w.window.height(), w.fittedHeight());
}

void tst_MainWindowHeight::emptiedListShrinksTheWindow()
{
    Window w;
    QVERIFY(w.showActive());
    QCOMPARE(w.window.height(), w.fittedHeight());
    const int before = w.window.height();
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.stack->isHidden());
    QTRY_VERIFY(w.window.height() < before);
    QCOMPARE(w.window.height(), w.window.sizeHint().height());
    QVERIFY(w.stack->isHidden());
}

void tst_MainWindowHeight::searchAloneDoesNotResize()
{
    Window w;
    QVERIFY(w.showActive());
    const int before = w.window.height();
    w.calc.records = numberedRecords(1);
    w.enter(u"calc "_s);
    QCOMPARE(w.window.height(), before);
    QVERIFY(w.stack->isHidden());
    QCOMPARE(w.stack->maximumHeight(), 0);
    QTRY_VERIFY(w.window.height() != before);
    QVERIFY(w.stack->isVisible());
}

void tst_MainWindowHeight::burstOfChangesResizesOnce()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    const EventCounter resizes(&w.window, QEvent::Resize);
    for (const int count : {1, 5, 3, 2, 4}) {
        w.calc.records = numberedRecords(count);
        w.enter(u"calc "_s);
    }
    w.launcher.unpinApp(programPath(1));
    w.settle();
    QCOMPARE(w.window.height(), w.baseHeight() + w.fullListHeight());
    QCOMPARE(resizes.count, 1);
}

void tst_MainWindowHeight::searchPaintsOnce_data()
{
    QTest::addColumn<int>("rows");
    QTest::newRow("as many rows") << 2;
    QTest::newRow("more rows") << 4;
    QTest::newRow("fewer rows") << 1;
}

void tst_MainWindowHeight::searchPaintsOnce()
{
    QFETCH(int, rows);
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 2);
    w.calc.records = numberedRecords(rows);
    EventCounter window(&w.window, QEvent::Paint);
    EventCounter list(w.list->viewport(), QEvent::Paint);
    w.edit->clearFocus(); // its cursor blinks
    w.settle();
    const int windowBefore = window.count;
    const int listBefore = list.count;
    QMetaObject::invokeMethod(&w.window, "performSearch");
    w.settle();
    QCOMPARE(list.count, listBefore + 1);
    QCOMPARE(window.count, windowBefore + 1);
}

void tst_MainWindowHeight::hiddenWindowIsFittedWhenItShows()
{
    Window w;
    QVERIFY(w.showActive());
    w.window.hide();
    showRows(w, 2);
    QVERIFY(w.showActive());
    QCOMPARE(w.window.height(), w.baseHeight() + w.fullListHeight());
}

void tst_MainWindowHeight::dragSetsTheLimit()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 100);
    w.dragHeight(600);
    QCOMPARE(w.window.height(), 600);
    QCOMPARE(w.stack->height(), 600 - w.baseHeight());
    QCOMPARE(w.stack->minimumHeight(), w.stack->height());
    QCOMPARE(w.stack->maximumHeight(), w.stack->height());

    showRows(w, 1);
    QCOMPARE(w.window.height(), w.baseHeight() + w.fullListHeight());
    showRows(w, 100);
    QCOMPARE(w.window.height(), 600);
}

void tst_MainWindowHeight::dragMakesTheListSmaller()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 100);
    w.dragHeight(300);
    QCOMPARE(w.window.height(), 300);
    QCOMPARE(w.stack->height(), 300 - w.baseHeight());
    showRows(w, 200);
    QCOMPARE(w.window.height(), 300);
}

void tst_MainWindowHeight::dragBelowOneRowStillShowsOne()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 3);
    w.dragHeight(60);
    QCOMPARE(w.stack->height(), w.list->sizeHintForRow(0));
    showRows(w, 4);
    QCOMPARE(w.stack->height(), w.list->sizeHintForRow(0));
    QCOMPARE(w.window.height(), w.baseHeight() + w.list->sizeHintForRow(0));
    QVERIFY(w.window.height() > 60);
}

void tst_MainWindowHeight::dragWithoutRowsChangesNoLimit()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    w.dragHeight(300);
    QVERIFY(w.stack->isHidden());
    showRows(w, 100);
    QCOMPARE(w.window.height(), 460);
}

void tst_MainWindowHeight::dragOnAPageChangesNoLimit()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 100);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.settle();
    w.dragHeight(650);
    QCOMPARE(w.window.height(), 650);
    Q_EMIT w.todo.viewCloseRequested();
    w.settle();
    QCOMPARE(w.window.height(), 460);
}

void tst_MainWindowHeight::dragOfAShortListLimitsTheNextList()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 1);
    w.dragHeight(550);
    QCOMPARE(w.window.height(), 550);
    QCOMPARE(w.stack->height(), w.fullListHeight());
    // The remaining space is below the rows.
    QCOMPARE(w.stack->mapTo(&w.window, QPoint()).y(), w.baseHeight() - 20);
    showRows(w, 100);
    QCOMPARE(w.window.height(), 550);
}

void tst_MainWindowHeight::dragOfTheWidthChangesNoLimit()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 1);
    for (const int width : {800, 850}) { // the first might count as an answer to the fit
        w.drag(QSize(width, w.window.height()));
        QCOMPARE(w.window.width(), width);
    }
    showRows(w, 100);
    QCOMPARE(w.window.height(), 460);
}

void tst_MainWindowHeight::programsOwnResizeChangesNoLimit()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 100);
    w.window.resize(760, 600);
    w.settle();
    w.search();
    w.settle();
    QCOMPARE(w.window.height(), 460);
}

void tst_MainWindowHeight::lateAnswersToRequestsChangeNoLimit()
{
    Window w;
    QVERIFY(w.showActive());
    QList<int> heights;
    for (const int count : {3, 1, 4, 2}) {
        showRows(w, count);
        heights.append(w.window.height());
    }
    // The window system answers all requests only now.
    for (const int height : heights) {
        w.dragHeight(height);
    }
    QCOMPARE(w.window.height(), heights.last());
    showRows(w, 100);
    QCOMPARE(w.window.height(), 460);
}

void tst_MainWindowHeight::repeatedAnswersChangeNoLimit()
{
    Window w;
    QVERIFY(w.showActive());
    QList<int> heights;
    for (const int count : {3, 1}) {
        showRows(w, count);
        heights.append(w.window.height());
    }
    w.dragHeight(heights.first());
    showRows(w, 4);
    heights.append(w.window.height());
    for (const int height : heights) {
        w.dragHeight(height);
    }
    showRows(w, 100);
    QCOMPARE(w.window.height(), 460);
}

void tst_MainWindowHeight::dragWorksAgainAfterLateAnswers()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 3);
    const int three = w.window.height();
    showRows(w, 1);
    w.dragHeight(three);
    w.dragHeight(500);
    w.dragHeight(three);
    showRows(w, 100);
    QCOMPARE(w.window.height(), three);
}

void tst_MainWindowHeight::userCanMakeTheWindowAsSmallAsOneRow()
{
    Window w;
    QVERIFY(w.showActive());
    showRows(w, 100);
    QCOMPARE(w.window.minimumHeight(), w.baseHeight() + w.list->sizeHintForRow(0));
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    w.enter(QString());
    w.settle();
    QCOMPARE(w.window.minimumHeight(), w.baseHeight());
}

void tst_MainWindowHeight::pageTakesTheInitialHeight_data()
{
    QTest::addColumn<int>("rowCount");
    QTest::addColumn<int>("limit");
    QTest::newRow("from a short list") << 1 << 460;
    QTest::newRow("from a full list") << 100 << 460;
    QTest::newRow("from a list that was made longer") << 100 << 700;
    QTest::newRow("from a list that was made shorter") << 100 << 250;
}

void tst_MainWindowHeight::pageTakesTheInitialHeight()
{
    QFETCH(int, rowCount);
    QFETCH(int, limit);
    Window w;
    QVERIFY(w.showActive());
    showRows(w, rowCount);
    if (limit != 460) {
        w.dragHeight(limit);
    }
    const int before = w.window.height();
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QCOMPARE(w.window.height(), 460);
    w.settle();
    QCOMPARE(w.window.height(), 460);
    QCOMPARE(w.window.width(), 760);
    Q_EMIT w.todo.viewCloseRequested();
    w.settle();
    QCOMPARE(w.window.height(), before);
}

void tst_MainWindowHeight::pageFillsTheWindow()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    const int base = w.window.height();
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.settle();
    QCOMPARE(w.todo.page->height(), 460 - base);
    QCOMPARE(w.todo.page->width(), 720);
}

void tst_MainWindowHeight::pageRemovesTheLimitsOfTheList()
{
    Window w;
    w.settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    QVERIFY(w.stack->isVisible());
    QCOMPARE(w.stack->minimumHeight(), 0);
    QCOMPARE(w.stack->maximumHeight(), QWIDGETSIZE_MAX);

    // The page limits the minimum height of the window.
    w.todo.page->setMinimumHeight(200);
    w.settle();
    QVERIFY(w.window.minimumHeight() > 200);
}

void tst_MainWindowHeight::dragOfAPageLastsUntilThePageCloses()
{
    Window w;
    QVERIFY(w.showActive());
    w.enter(u"todo "_s);
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.settle();
    w.dragHeight(600);
    w.enter(u"todo x"_s);
    w.settle();
    QCOMPARE(w.window.height(), 600);
}

void tst_MainWindowHeight::fitDoesNotResizeAPage()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(w.window.openPluginView(u"todo"_s));
    w.launcher.unpinApp(programPath(1)); // schedules a fit
    w.settle();
    QVERIFY(w.todo.page->isVisible());
    QCOMPARE(w.window.height(), 460);
}

VASKEL_TEST(tst_MainWindowHeight, QApplication)
#include "tst_MainWindowHeight.moc"
