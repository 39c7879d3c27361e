// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultList.h"

#include "launcher/AppLauncher.h"
#include "launcher/LauncherTest.h"
#include "support/ScreenReader.h"
#include "support/TestProgram.h"

#include <QImage>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct List
{
    List(int rowCount)
    {
        list.setFocusPolicy(Qt::NoFocus);
        list.setGeometry(100, 100, 400, 400); // not below the pointer
        QVariantList records;
        for (int row = 0; row < rowCount; ++row) {
            records.append(QVariantMap{{u"name"_s, u"term"_s}, {u"path"_s, u"/x"_s}});
        }
        list.showResults(records, {});
        list.clearSelection();
        list.setCurrentRow(-1);
        list.show();
    }

    QImage picture(int row)
    {
        return list.viewport()->grab(list.visualItemRect(list.item(row))).toImage();
    }

    AppLauncher launcher;
    ResultList list{&launcher};
};

} // namespace

class tst_ResultList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { launchertest::reset(); }
    void cleanupTestCase() { fakePlatform() = FakePlatform(); }

    void showsNineDigits();
    void hidesTheDigits();
    void digitsFollowTheScrolledRows();
    void digitsFollowNewRows();
    void digitsReplaceNoText();
    void firstVisibleRowIsAtLeastHalfVisible();
    void emphasizesTheSearchTexts();
    void newRowsAreNotReportedOneByOne();
    void currentRowIsSaidWithoutTheFocus();
};

void tst_ResultList::showsNineDigits()
{
    List l(12);
    l.list.resize(400, 1200);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    const QImage without = l.picture(0);
    l.list.setDigitsVisible(true);
    for (int row = 0; row < 9; ++row) {
        QVERIFY(l.picture(row) != without);
        QVERIFY(row == 0 || l.picture(row) != l.picture(row - 1));
    }
    QCOMPARE(l.picture(9), without);
    QCOMPARE(l.picture(11), without);
}

void tst_ResultList::hidesTheDigits()
{
    List l(3);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    const QImage without = l.picture(0);
    l.list.setDigitsVisible(true);
    QVERIFY(l.picture(0) != without);
    l.list.setDigitsVisible(false);
    QCOMPARE(l.picture(0), without);
}

void tst_ResultList::digitsFollowTheScrolledRows()
{
    List l(40);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    l.list.setDigitsVisible(true);
    const QImage one = l.picture(0);
    const QImage two = l.picture(1);
    const int rowHeight = l.list.sizeHintForRow(0);
    l.list.verticalScrollBar()->setValue(4 * rowHeight);
    QCOMPARE(l.list.firstVisibleRow(), 4);
    QCOMPARE(l.picture(4), one);
    QCOMPARE(l.picture(5), two);
}

void tst_ResultList::digitsFollowNewRows()
{
    List l(40);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    l.list.setDigitsVisible(true);
    l.list.verticalScrollBar()->setValue(l.list.verticalScrollBar()->maximum());
    QVERIFY(l.list.firstVisibleRow() > 20);
    const QVariantMap record{{u"name"_s, u"term"_s}, {u"path"_s, u"/x"_s}};
    l.list.showResults({record, record}, {});
    l.list.setCurrentRow(-1);
    QCOMPARE(l.list.firstVisibleRow(), 0);
    QVERIFY(l.picture(0) != l.picture(1));
    l.list.showResults({}, {});
    QCOMPARE(l.list.firstVisibleRow(), -1);
}

void tst_ResultList::digitsReplaceNoText()
{
    List l(1);
    l.list.showResults({QVariantMap{{u"name"_s, QString(300, u'█')}, {u"path"_s, u"/x"_s}}}, {});
    l.list.setCurrentRow(-1);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    const auto textEnd = [&l] {
        const QImage image = l.picture(0);
        int end = 0;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                end = image.pixelColor(x, y).lightness() < 60 ? x : end;
            }
        }
        return end;
    };
    const int before = textEnd();
    l.list.setDigitsVisible(true);
    QVERIFY(textEnd() <= before - 20);
}

void tst_ResultList::firstVisibleRowIsAtLeastHalfVisible()
{
    List l(40);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    const int rowHeight = l.list.sizeHintForRow(0);
    QCOMPARE(l.list.firstVisibleRow(), 0);
    l.list.verticalScrollBar()->setValue(rowHeight / 2 - 2);
    QCOMPARE(l.list.firstVisibleRow(), 0);
    l.list.verticalScrollBar()->setValue(rowHeight / 2 + 2);
    QCOMPARE(l.list.firstVisibleRow(), 1);
}

void tst_ResultList::emphasizesTheSearchTexts()
{
    List l(1);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    const QImage without = l.picture(0);
    const QVariantList records{QVariantMap{{u"name"_s, u"term"_s}, {u"path"_s, u"/x"_s}}};
    l.list.showResults(records, {u"er"_s});
    l.list.setCurrentRow(-1);
    QVERIFY(l.picture(0) != without);
    l.list.updateRecords(records);
    l.list.setCurrentRow(-1);
    QVERIFY(l.picture(0) != without);
    l.list.showResults(records, {});
    l.list.setCurrentRow(-1);
    QCOMPARE(l.picture(0), without);
}

void tst_ResultList::newRowsAreNotReportedOneByOne()
{
    List l(40);
    QVERIFY(QTest::qWaitForWindowExposed(&l.list));
    const QSignalSpy inserted(l.list.model(), &QAbstractItemModel::rowsInserted);
    const QVariantMap record{{u"name"_s, u"term"_s}, {u"path"_s, u"/x"_s}};
    l.list.showResults(QVariantList(50, record), {});
    QVERIFY(inserted.size() <= 1);
    QCOMPARE(l.list.count(), 50);
    QCOMPARE(l.list.currentRow(), 0);
    QVERIFY(l.list.item(0)->isSelected());
    const int rowHeight = l.list.sizeHintForRow(0);
    QCOMPARE(l.list.visualItemRect(l.list.item(2)).top(),
             l.list.visualItemRect(l.list.item(0)).top() + 2 * rowHeight);
    QVERIFY(l.list.verticalScrollBar()->maximum() > 40 * rowHeight);
}

void tst_ResultList::currentRowIsSaidWithoutTheFocus()
{
    const ScreenReader reader;
    AppLauncher launcher;
    ResultList list(&launcher);
    const auto record = [](const QString &title) {
        return QVariant(QVariantMap{{u"title"_s, title}});
    };
    list.showResults({record(u"One"_s), record(u"Two"_s), record(u"Three"_s)}, {});
    list.moveSelection(2);
    QStringList names = reader.names();
    for (QString &name : names) {
        name = name.trimmed(); // there is no second line
    }
    QCOMPARE(names, (QStringList{u"One"_s, u"Three"_s}));
}

VASKEL_TEST(tst_ResultList, QApplication)
#include "tst_ResultList.moc"
