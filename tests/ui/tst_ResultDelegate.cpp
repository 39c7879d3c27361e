// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultDelegate.h"

#include "support/TestProgram.h"
#include "ui/ResultItem.h"

#include "support/TestHome.h"

#include <QImage>
#include <QListWidget>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString icon(int size)
{
    QString path = testhome::path() + u"/%1.png"_s.arg(size);
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(path);
    return path;
}

class List : public QListWidget
{
public:
    List()
    {
        setItemDelegate(new ResultDelegate(this));
        setIconSize(QSize(40, 40));
        setUniformItemSizes(true);
        resize(300, 400);
    }

    void add(const QString &title, const QString &iconPath = QString(),
             const QString &path = QString())
    {
        addItem(new ResultItem({{u"title"_s, title},
                                {u"subtitle"_s, u"subtitle"_s},
                                {u"icon"_s, iconPath},
                                {u"path"_s, path}}));
    }

    /// The x of the first dark pixel in an unselected row, or -1.
    int textColumn(int row)
    {
        const QImage image = viewport()->grab(visualItemRect(item(row))).toImage();
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                const QColor colour = image.pixelColor(x, y);
                if (colour.lightness() < 60 && colour != Qt::red) {
                    return x;
                }
            }
        }
        return -1;
    }

    /// The x of the first red pixel in a row, or -1.
    int firstRed(int row)
    {
        const QRect rect = visualItemRect(item(row));
        const QImage image = viewport()->grab(rect).toImage();
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, image.height() / 2) == Qt::red) {
                return x;
            }
        }
        return -1;
    }
};

} // namespace

class tst_ResultDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowHasOneHeight_data();
    void everyRowHasOneHeight();
    void rowHasRoomForIconAndBothLines();
    void textsAlignForAllIconSizes();
    void rowWithoutIconAndPathStartsAtTheEdge();
    void headingAlignsWithRowsThatHaveIcons();
    void smallIconIsCentred();
    void longTextDoesNotScrollSideways();
};

void tst_ResultDelegate::everyRowHasOneHeight_data()
{
    QTest::addColumn<int>("iconSize");
    QTest::newRow("icon taller than the lines") << 40;
    QTest::newRow("lines taller than the icon") << 8;
}

void tst_ResultDelegate::everyRowHasOneHeight()
{
    QFETCH(int, iconSize);
    List list;
    list.setIconSize(QSize(iconSize, iconSize));
    list.add(u"Latin"_s);
    list.add(QString());
    list.add(u"记事本"_s);
    list.add(u"of\nthree lines"_s);
    list.add(u"icon"_s, icon(40));
    list.add(u"small icon"_s, icon(16));
    for (int row = 1; row < list.count(); ++row) {
        QCOMPARE(list.sizeHintForRow(row), list.sizeHintForRow(0));
        QCOMPARE(list.visualItemRect(list.item(row)).height(), list.sizeHintForRow(0));
    }
}

void tst_ResultDelegate::rowHasRoomForIconAndBothLines()
{
    List list;
    list.add(u"x"_s);
    QVERIFY(list.sizeHintForRow(0) >= 40);
    QVERIFY(list.sizeHintForRow(0) >= 2 * list.fontMetrics().height());

    QFont font = list.font();
    font.setPixelSize(40);
    list.setFont(font);
    QVERIFY(list.sizeHintForRow(0) >= 2 * list.fontMetrics().height());
}

void tst_ResultDelegate::textsAlignForAllIconSizes()
{
    List list;
    list.add(u"█"_s, icon(40));
    list.add(u"█"_s, icon(16));
    list.add(u"█"_s, QString(), u"/application"_s);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));

    QVERIFY(list.textColumn(0) > 40);
    QCOMPARE(list.textColumn(1), list.textColumn(0));
    QCOMPARE(list.textColumn(2), list.textColumn(0));
}

void tst_ResultDelegate::rowWithoutIconAndPathStartsAtTheEdge()
{
    List list;
    list.add(u"█"_s);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QVERIFY(list.textColumn(0) >= 0);
    QVERIFY(list.textColumn(0) < 10);
}

void tst_ResultDelegate::headingAlignsWithRowsThatHaveIcons()
{
    List list;
    list.add(u"█"_s);
    list.add(u"█"_s, icon(40));
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QVERIFY(list.textColumn(1) > 40);
    QCOMPARE(list.textColumn(0), list.textColumn(1));
}

void tst_ResultDelegate::smallIconIsCentred()
{
    List list;
    list.add(u"x"_s, icon(40));
    list.add(u"x"_s, icon(16));
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QVERIFY(list.firstRed(0) >= 0);
    QCOMPARE(list.firstRed(1), list.firstRed(0) + 12);
}

void tst_ResultDelegate::longTextDoesNotScrollSideways()
{
    List list;
    list.add(u"short"_s);
    list.add(QString(1000, u'w'));
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QCOMPARE(list.visualItemRect(list.item(1)).width(), list.viewport()->width());
    QCOMPARE(list.horizontalScrollBar()->maximum(), 0);
}

VASKEL_TEST(tst_ResultDelegate, QApplication)
#include "tst_ResultDelegate.moc"
