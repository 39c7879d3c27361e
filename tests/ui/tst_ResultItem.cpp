// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultItem.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString iconFile()
{
    QString path = testhome::path() + "/row.png"_L1;
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(path);
    return path;
}

} // namespace

class tst_ResultItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsTitleLineFeedSubtitle_data();
    void textIsTitleLineFeedSubtitle();
    void keepsTheWholeRecord();
    void iconComesFromTheRecordsFile();
    void emptyIconGivesNoDecoration();
    void iconFileIsReadOnlyOnceAndOnlyWhenNeeded();
    void otherRolesAreThoseOfTheBaseClass();
    void screenReaderGetsVisibleMarks();
};

void tst_ResultItem::textIsTitleLineFeedSubtitle_data()
{
    QTest::addColumn<QVariantMap>("record");
    QTest::addColumn<QString>("text");

    QTest::newRow("title and subtitle")
        << QVariantMap{{u"title"_s, u"3"_s}, {u"subtitle"_s, u"1+2 = 3"_s}} << u"3\n1+2 = 3"_s;
    QTest::newRow("name and desc")
        << QVariantMap{{u"name"_s, u"Files"_s}, {u"desc"_s, u"Start Menu"_s}}
        << u"Files\nStart Menu"_s;
    QTest::newRow("title before name, subtitle before desc") << QVariantMap{{u"title"_s, u"t"_s},
                                                                            {u"name"_s, u"n"_s},
                                                                            {u"subtitle"_s, u"s"_s},
                                                                            {u"desc"_s, u"d"_s}}
                                                             << u"t\ns"_s;
    QTest::newRow("empty title hides the name")
        << QVariantMap{{u"title"_s, QString()}, {u"name"_s, u"n"_s}, {u"desc"_s, u"d"_s}}
        << u"\nd"_s;
    QTest::newRow("empty subtitle hides the desc")
        << QVariantMap{{u"name"_s, u"n"_s}, {u"subtitle"_s, QString()}, {u"desc"_s, u"d"_s}}
        << u"n\n"_s;
    QTest::newRow("title alone keeps the line feed")
        << QVariantMap{{u"title"_s, u"t"_s}} << u"t\n"_s;
    QTest::newRow("record without texts is one line feed")
        << QVariantMap{{u"path"_s, u"/x"_s}} << u"\n"_s;
    QTest::newRow("keys are case-sensitive")
        << QVariantMap{{u"Title"_s, u"t"_s}, {u"NAME"_s, u"n"_s}} << u"\n"_s;
    QTest::newRow("values that are no strings")
        << QVariantMap{{u"title"_s, 3}, {u"subtitle"_s, QVariantMap()}} << u"3\n"_s;
}

void tst_ResultItem::textIsTitleLineFeedSubtitle()
{
    QFETCH(QVariantMap, record);
    QTEST(ResultItem(record).text(), "text");
}

void tst_ResultItem::keepsTheWholeRecord()
{
    const QVariantMap record{{u"title"_s, u"t"_s},
                             {u"anything"_s, 5},
                             {u"action"_s, QVariantMap{{u"type"_s, u"copy"_s}}}};
    QCOMPARE(ResultItem(record).data(Qt::UserRole).toMap(), record);
}

void tst_ResultItem::iconComesFromTheRecordsFile()
{
    const ResultItem item({{u"icon"_s, iconFile()}});
    QCOMPARE(item.icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

void tst_ResultItem::emptyIconGivesNoDecoration()
{
    QVERIFY(ResultItem(QVariantMap{{u"icon"_s, QString()}}).icon().isNull());
    QVERIFY(!ResultItem(QVariantMap{{u"title"_s, u"t"_s}}).data(Qt::DecorationRole).isValid());
}

void tst_ResultItem::iconFileIsReadOnlyOnceAndOnlyWhenNeeded()
{
    const QString path = testhome::path() + "/late.png"_L1;
    const ResultItem item({{u"icon"_s, path}});
    QCOMPARE(item.text(), u"\n"_s);
    QVERIFY(QFile::rename(iconFile(), path));
    const qint64 key = item.icon().cacheKey();
    QVERIFY(!item.icon().isNull());
    QCOMPARE(item.icon().cacheKey(), key);
}

void tst_ResultItem::otherRolesAreThoseOfTheBaseClass()
{
    ResultItem item({{u"title"_s, u"t"_s}});
    QVERIFY(!item.data(Qt::ToolTipRole).isValid());
    item.setToolTip(u"tip"_s);
    QCOMPARE(item.toolTip(), u"tip"_s);
    QVERIFY(!(item.flags() & Qt::ItemIsEditable));
}

void tst_ResultItem::screenReaderGetsVisibleMarks()
{
    const QVariantMap record{{u"title"_s, u"invoice\u202efdp.exe"_s}, {u"subtitle"_s, u"a\nb"_s}};
    const ResultItem item(record);
    QCOMPARE(item.data(Qt::AccessibleTextRole).toString(), u"invoice⟨U+202E⟩fdp.exe\na⏎b"_s);
    QCOMPARE(item.text(), u"invoice\u202efdp.exe\na\nb"_s);
    QCOMPARE(item.data(Qt::UserRole).toMap(), record);
    QVERIFY(!ResultItem(QVariantMap{{u"title"_s, u"t"_s}}).data(Qt::AccessibleTextRole).isValid());
}

VASKEL_TEST(tst_ResultItem, QApplication)
#include "tst_ResultItem.moc"
