// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RowUpdate.h"

#include "core/RowsChanged.h"
#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

void report(Window &w, const QString &command)
{
    w.plugins.rowsChanged()->report(command);
    w.settle();
}

QVariantMap copyRecord(const QString &title)
{
    return testRecord(title, action(u"copy"_s, title, u"calc"_s));
}

QVariantList copyRecords(const QStringList &titles)
{
    QVariantList records;
    for (const QString &title : titles) {
        records.append(copyRecord(title));
    }
    return records;
}

} // namespace

/// The window shows the rows that a plugin reports later.
class tst_RowUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void repeatsTheQueryOfTheBox();
    void repeatsTheQueryOfAnAlias();
    void leavesRowsThatBelongToAnotherText_data();
    void leavesRowsThatBelongToAnotherText();
    void leavesAPendingSearchToItsDelay();
    void keepsTheCurrentRow_data();
    void keepsTheCurrentRow();
    void keepsTheScrollPosition();
    void fitsTheWindowToTheRows();
    void doesNotOpenAPageByItself();
    void keepsAnOpenPage();
    void keepsTheFocusOfTheList();
    void updatesAHiddenWindow();
};

void tst_RowUpdate::repeatsTheQueryOfTheBox()
{
    Window w;
    w.calc.records = {testRecord(u"wait"_s)};
    w.enter(u"calc  1 + 2"_s);
    w.calc.records = copyRecords({u"3"_s, u"4"_s});
    report(w, u"calc"_s);
    QCOMPARE(w.calc.queries, QStringList({u" 1 + 2"_s, u" 1 + 2"_s}));
    QCOMPARE(w.rows(), QStringList({u"3\nabout 3"_s, u"4\nabout 4"_s}));
    QCOMPARE(w.list->currentRow(), 0);
}

void tst_RowUpdate::repeatsTheQueryOfAnAlias()
{
    Window w;
    w.enter(u"user x"_s);
    w.set.records = numberedRecords(2);
    report(w, u"set"_s);
    QCOMPARE(w.list->count(), 2);
}

void tst_RowUpdate::leavesRowsThatBelongToAnotherText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    QTest::newRow("another command") << u"todo x"_s << u"calc"_s;
    QTest::newRow("no command") << u"paint"_s << u"calc"_s;
    QTest::newRow("empty box") << QString() << u"calc"_s;
    QTest::newRow("unknown command in the box") << u"xyz 1"_s << u"calc"_s;
    QTest::newRow("unknown command in both") << u"xyz 1"_s << u"xyz"_s;
}

void tst_RowUpdate::leavesRowsThatBelongToAnotherText()
{
    QFETCH(QString, text);
    QFETCH(QString, command);
    Window w;
    w.todo.records = numberedRecords(3);
    w.enter(text);
    const QStringList before = w.rows();
    const QListWidgetItem *row = w.list->item(0);
    w.calc.records = numberedRecords(9);
    w.todo.records = numberedRecords(9);
    report(w, command);
    QCOMPARE(w.rows(), before);
    QCOMPARE(w.list->item(0), row);
    QCOMPARE(w.calc.queries, QStringList());
}

void tst_RowUpdate::leavesAPendingSearchToItsDelay()
{
    Window w;
    w.calc.records = numberedRecords(1);
    w.enter(u"calc 1"_s);
    w.searchTimer().setInterval(60000);
    w.box->setText(u"calc 12"_s);
    report(w, u"calc"_s);
    QCOMPARE(w.calc.queries, QStringList(u"1"_s));
    QVERIFY(w.searchTimer().isActive());
}

void tst_RowUpdate::keepsTheCurrentRow_data()
{
    QTest::addColumn<QVariantList>("before");
    QTest::addColumn<int>("row");
    QTest::addColumn<QVariantList>("after");
    QTest::addColumn<int>("rowAfter");

    const QVariantList three = copyRecords({u"b"_s, u"d"_s, u"f"_s});
    const QVariantList six = copyRecords({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s});
    QTest::newRow("same rows") << three << 1 << three << 1;
    QTest::newRow("rows before it") << three << 1 << six << 3;
    QTest::newRow("first row moves") << three << 0 << six << 1;
    QTest::newRow("rows before it go") << six << 5 << three << 2;
    QTest::newRow("its row goes") << six << 2 << three << 2;
    QTest::newRow("its row goes with those after it") << six << 4 << six.mid(0, 3) << 2;
    QTest::newRow("message is replaced") << QVariantList{testRecord(u"wait"_s)} << 0 << three << 0;

    QVariantList renamed = three;
    renamed[1] = testRecord(u"new name"_s, action(u"copy"_s, u"d"_s, u"calc"_s));
    QTest::newRow("its texts change") << six << 3 << renamed << 1;
    const QVariantMap program = testRecord(u"p"_s, {}, u"/p.link"_s);
    QTest::newRow("row with a path")
        << QVariantList{copyRecord(u"a"_s), program} << 1 << QVariantList{program} << 0;
    const QVariantMap other = testRecord(u"q"_s, {}, u"/q.link"_s);
    QTest::newRow("rows with other paths")
        << QVariantList{other, program} << 0 << QVariantList{program, other} << 1;
    const QVariantMap note = testRecord(u"note"_s);
    QTest::newRow("row without an action")
        << QVariantList{copyRecord(u"a"_s), note} << 1 << QVariantList{note} + three << 0;
}

void tst_RowUpdate::keepsTheCurrentRow()
{
    QFETCH(QVariantList, before);
    QFETCH(int, row);
    QFETCH(QVariantList, after);
    Window w;
    w.calc.records = before;
    w.enter(u"calc "_s);
    w.list->setCurrentRow(row);
    w.calc.records = after;
    report(w, u"calc"_s);
    QCOMPARE(w.list->count(), after.size());
    QTEST(w.list->currentRow(), "rowAfter");
    QVERIFY(w.list->currentItem()->isSelected());
}

void tst_RowUpdate::keepsTheScrollPosition()
{
    Window w;
    w.calc.records = numberedRecords(50);
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    QScrollBar *bar = w.list->verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    const int position = bar->value();
    QVERIFY(position > 0);
    w.list->setCurrentRow(w.list->row(w.list->itemAt(5, w.list->viewport()->height() / 2)));
    QCOMPARE(bar->value(), position);

    w.calc.records = numberedRecords(60);
    report(w, u"calc"_s);
    QCOMPARE(w.list->count(), 60);
    QCOMPARE(bar->value(), position);
}

void tst_RowUpdate::fitsTheWindowToTheRows()
{
    Window w;
    w.calc.records = numberedRecords(1);
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    const int before = w.window.height();
    w.calc.records = numberedRecords(3);
    report(w, u"calc"_s);
    QVERIFY(w.window.height() > before);
    QCOMPARE(w.window.height(), w.fittedHeight());
    QCOMPARE(w.stack->height(), w.fullListHeight());
}

void tst_RowUpdate::doesNotOpenAPageByItself()
{
    Window w;
    w.settings.setPluginAutoEnter(true);
    w.enter(u"todo "_s);
    QVERIFY(!w.isListCurrent());
    Q_EMIT w.todo.viewCloseRequested();
    QVERIFY(w.isListCurrent());
    report(w, u"todo"_s);
    QVERIFY(w.isListCurrent());
}

void tst_RowUpdate::keepsAnOpenPage()
{
    Window w;
    w.enter(u"todo x"_s);
    w.launchCurrent();
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    w.todo.records = numberedRecords(2);
    report(w, u"todo"_s);
    QCOMPARE(w.stack->currentWidget(), w.todo.page);
    QCOMPARE(w.list->count(), 2);
}

void tst_RowUpdate::keepsTheFocusOfTheList()
{
    Window w;
    w.calc.records = numberedRecords(2);
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.settle();
    w.list->setFocus();
    w.calc.records = numberedRecords(3);
    report(w, u"calc"_s);
    QCOMPARE(w.list->count(), 3);
    QVERIFY(w.list->hasFocus());
}

void tst_RowUpdate::updatesAHiddenWindow()
{
    Window w;
    w.calc.records = numberedRecords(1);
    QVERIFY(w.showActive());
    w.enter(u"calc "_s);
    w.window.hide();
    w.calc.records = numberedRecords(3);
    report(w, u"calc"_s);
    QCOMPARE(w.list->count(), 3);
    QVERIFY(!w.window.isVisible());
}

VASKEL_TEST(tst_RowUpdate, QApplication)
#include "tst_RowUpdate.moc"
