// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultDelegate.h"

#include "settings/ThemeManager.h"
#include "support/TestProgram.h"
#include "ui/ResultItem.h"

#include "support/TestHome.h"

#include <QHelpEvent>
#include <QImage>
#include <QListWidget>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>

#include <algorithm>

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
        setItemDelegate(&delegate);
        setIconSize(QSize(40, 40));
        setUniformItemSizes(true);
        setFocusPolicy(Qt::NoFocus);
        setGeometry(100, 100, 300, 400); // not below the pointer
    }

    void add(const QString &title, const QString &iconPath = QString(),
             const QString &path = QString())
    {
        addItem(new ResultItem({{u"title"_s, title},
                                {u"subtitle"_s, u"subtitle"_s},
                                {u"icon"_s, iconPath},
                                {u"path"_s, path}}));
    }

    void addRecord(const QVariantMap &record) { addItem(new ResultItem(record)); }

    QImage picture(int row) { return viewport()->grab(visualItemRect(item(row))).toImage(); }

    /// Where the picture of the row changes if these are the search texts; empty if nowhere.
    QRect changeBy(const QStringList &searchTexts, int row = 0)
    {
        const QImage before = picture(row);
        delegate.setSearchTexts(searchTexts);
        const QImage after = picture(row);
        delegate.setSearchTexts({});
        QRegion changed;
        for (int y = 0; y < before.height(); ++y) {
            for (int x = 0; x < before.width(); ++x) {
                if (before.pixel(x, y) != after.pixel(x, y)) {
                    changed += QRect(x, y, 1, 1);
                }
            }
        }
        return changed.boundingRect();
    }

    /// The smallest rectangle around the text of a row that is not selected, in its upper or its
    /// lower half.
    QRect inkOf(int row, bool isTitle)
    {
        const QImage image = picture(row);
        const int middle = image.height() / 2;
        QRegion ink;
        for (int y = isTitle ? 0 : middle; y < (isTitle ? middle : image.height()); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y).lightness() < 200) {
                    ink += QRect(x, y, 1, 1);
                }
            }
        }
        return ink.boundingRect();
    }

    /// Whether a pixel of this part of a row has exactly this colour.
    bool holds(int row, const QRect &part, const QColor &color)
    {
        const QImage image = picture(row).copy(part);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == color) {
                    return true;
                }
            }
        }
        return false;
    }

    /// The lightness of the darkest pixel in the lower half of a row, where the subtitle is.
    int darkestOfSubtitle(int row)
    {
        const QImage image = picture(row);
        int darkest = 255;
        for (int y = image.height() / 2 + 1; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                darkest = std::min(darkest, image.pixelColor(x, y).lightness());
            }
        }
        return darkest;
    }

    /// The text of the tool tip that a help event at the row shows; empty if it shows none.
    QString toolTipOf(int row)
    {
        QToolTip::hideText();
        if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); })) {
            return u"still visible"_s;
        }
        const QPoint position = visualItemRect(item(row)).center();
        QHelpEvent event(QEvent::ToolTip, position, viewport()->mapToGlobal(position));
        QCoreApplication::sendEvent(viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }

    ResultDelegate delegate;

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
    void emphasizesTheMatch_data();
    void emphasizesTheMatch();
    void emphasizesNothingElse_data();
    void emphasizesNothingElse();
    void emphasizesTheSubtitleIfTheTitleDoesNotMatch();
    void subtitleIsSmallerAndInTheSecondaryColor();
    void startMenuIsWeaker();
    void selectedRowIsReadable();
    void subtitleIsPaintedWithoutItsLeadingBlank();
    void paintsControlCharactersVisibly();
    void titleWithoutSubtitleIsInTheMiddle();
    void elidesALongTextAtItsEnd();
    void onlyAnElidedRowHasAToolTip();
    void toolTipIsPlainText();
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

void tst_ResultDelegate::emphasizesTheMatch_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("queries");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("hit");
    QTest::newRow("letters") << u"Firefox"_s << QStringList(u"FOX"_s) << u"Fire"_s << u"fox"_s;
    QTest::newRow("pinyin") << u"记事本"_s << QStringList(u"shi"_s) << u"记"_s << u"事"_s;
    QTest::newRow("initials") << u"记事本"_s << QStringList(u"sb"_s) << u"记"_s << u"事本"_s;
    QTest::newRow("two words") << u"My Report 2"_s << QStringList{u"rep"_s, u"ort"_s} << u"My "_s
                               << u"Report"_s;
}

void tst_ResultDelegate::emphasizesTheMatch()
{
    QFETCH(QString, name);
    QFETCH(QStringList, queries);
    QFETCH(QString, before);
    QFETCH(QString, hit);
    List list;
    list.add(name, QString(), u"/program"_s);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));

    QFont font = list.font();
    font.setWeight(QFont::Medium);
    const QFontMetrics metrics(font);
    const int left = list.inkOf(0, true).left() + metrics.horizontalAdvance(before);
    const QRect change = list.changeBy(queries);
    QVERIFY(change.isValid());
    // The line below a Chinese character begins left of its ink.
    const int tolerance = hit.front().unicode() < 0x80 ? 2 : 6;
    QVERIFY2(std::abs(change.left() - left) <= tolerance,
             qPrintable(u"%1, not %2"_s.arg(change.left()).arg(left)));
    QVERIFY(change.width() >= metrics.horizontalAdvance(hit) - 2);
    QVERIFY(change.bottom() <= list.visualItemRect(list.item(0)).height() / 2 + 2);
}

void tst_ResultDelegate::emphasizesNothingElse_data()
{
    QTest::addColumn<QVariantMap>("record");
    QTest::addColumn<bool>("isEmphasized");
    const auto actionOf = [](const QString &type) {
        return QVariantMap{{u"type"_s, type}, {u"data"_s, u"/x"_s}};
    };
    QTest::newRow("program") << QVariantMap{{u"name"_s, u"term"_s}, {u"path"_s, u"/x"_s}} << true;
    QTest::newRow("file") << QVariantMap{{u"title"_s, u"term"_s},
                                         {u"action"_s, actionOf(u"openFile"_s)}}
                          << true;
    QTest::newRow("web") << QVariantMap{{u"title"_s, u"term"_s},
                                        {u"action"_s, actionOf(u"openUrl"_s)}}
                         << false;
    QTest::newRow("hint") << QVariantMap{{u"title"_s, u"term"_s},
                                         {u"action"_s, actionOf(u"none"_s)}}
                          << false;
    QTest::newRow("program without a match")
        << QVariantMap{{u"name"_s, u"files"_s}, {u"path"_s, u"/x"_s}} << false;
}

void tst_ResultDelegate::emphasizesNothingElse()
{
    QFETCH(QVariantMap, record);
    List list;
    list.addRecord(record);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QTEST(list.changeBy({u"term"_s}).isValid(), "isEmphasized");
}

void tst_ResultDelegate::emphasizesTheSubtitleIfTheTitleDoesNotMatch()
{
    List list;
    list.addRecord(
        {{u"name"_s, u"Reader"_s}, {u"desc"_s, u"Start Menu / Vendor"_s}, {u"path"_s, u"/x"_s}});
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const int middle = list.visualItemRect(list.item(0)).height() / 2;
    QVERIFY(list.changeBy({u"vendor"_s}).top() >= middle);
    QVERIFY(list.changeBy({u"r"_s}).bottom() <= middle + 2); // both match
}

void tst_ResultDelegate::subtitleIsSmallerAndInTheSecondaryColor()
{
    List list;
    list.addRecord({{u"title"_s, u"████████"_s}, {u"subtitle"_s, u"████████"_s}});
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const QRect title = list.inkOf(0, true);
    const QRect subtitle = list.inkOf(0, false);
    QVERIFY(subtitle.width() > title.width() / 2);
    QVERIFY(subtitle.width() < title.width() * 15 / 16);
    const QColor text = list.palette().color(QPalette::Text);
    const int middle = list.visualItemRect(list.item(0)).height() / 2;
    QVERIFY(list.holds(0, title, text));
    QVERIFY(!list.holds(0, title, secondaryTextColor(text)));
    const QRect lower = subtitle.adjusted(0, 2, 0, 0); // the title may reach below the middle
    QVERIFY(lower.top() > middle);
    QVERIFY(list.holds(0, lower, secondaryTextColor(text)));
    QVERIFY(!list.holds(0, lower, text));
}

void tst_ResultDelegate::startMenuIsWeaker()
{
    List list;
    const auto add = [&list](const QString &subtitle, const QString &path) {
        list.addRecord({{u"name"_s, u"a"_s}, {u"desc"_s, subtitle}, {u"path"_s, path}});
    };
    add(u"Start Menu"_s, u"/program"_s);
    add(u"Start Menu / ████"_s, u"/program"_s); // thin letters may be too faint
    add(u"Stort Menu"_s, u"/program"_s);
    add(u"Start Menu"_s, QString());
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QVERIFY(list.darkestOfSubtitle(0) > list.darkestOfSubtitle(2) + 5);
    QVERIFY(list.darkestOfSubtitle(0) < 250);
    QVERIFY(list.darkestOfSubtitle(1) < list.darkestOfSubtitle(0) - 5);
    QVERIFY(list.darkestOfSubtitle(3) < list.darkestOfSubtitle(0) - 5);
}

void tst_ResultDelegate::selectedRowIsReadable()
{
    List list;
    list.addRecord({{u"title"_s, u"████████"_s}, {u"subtitle"_s, u"████████"_s}});
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const QRect title = list.inkOf(0, true);
    const QRect subtitle = list.inkOf(0, false).adjusted(0, 2, 0, 0);
    list.setCurrentRow(0);
    QVERIFY(list.holds(0, title, Qt::white));
    QVERIFY(list.holds(0, subtitle, Qt::white)); // less would be too faint
    const QImage image = list.picture(0);
    const int background = image.pixelColor(image.width() - 20, 5).lightness();
    int lightest = 0;
    for (int x = subtitle.left(); x <= subtitle.right(); ++x) {
        lightest = std::max(lightest, image.pixelColor(x, subtitle.center().y()).lightness());
    }
    QVERIFY(lightest > (background + 3 * 255) / 4);
}

void tst_ResultDelegate::subtitleIsPaintedWithoutItsLeadingBlank()
{
    List list;
    list.addRecord({{u"title"_s, u"2"_s}, {u"subtitle"_s, u"1+1 = 2"_s}});
    list.addRecord({{u"title"_s, u"2"_s}, {u"subtitle"_s, u"  1+1 = 2"_s}});
    list.addRecord({{u"title"_s, u"2"_s}, {u"subtitle"_s, u"3+1 = 2"_s}});
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QCOMPARE(list.picture(1), list.picture(0));
    QVERIFY(list.picture(2) != list.picture(0));
    QCOMPARE(list.item(1)->text(), u"2\n  1+1 = 2"_s);
}

void tst_ResultDelegate::paintsControlCharactersVisibly()
{
    List list;
    list.addRecord({{u"title"_s, u"invoice\u202efdp.exe"_s}, {u"subtitle"_s, u"a\nb"_s}});
    list.addRecord({{u"title"_s, u"invoice⟨U+202E⟩fdp.exe"_s}, {u"subtitle"_s, u"a⏎b"_s}});
    list.addRecord({{u"title"_s, u"invoicefdp.exe"_s}, {u"subtitle"_s, u"ab"_s}});
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QCOMPARE(list.picture(0), list.picture(1));
    QVERIFY(list.picture(0) != list.picture(2));
}

void tst_ResultDelegate::titleWithoutSubtitleIsInTheMiddle()
{
    List list;
    list.addRecord({{u"title"_s, u"█"_s}, {u"subtitle"_s, QString()}});
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const QImage image = list.picture(0);
    const int x = list.inkOf(0, true).center().x();
    QCOMPARE(image.pixelColor(x, image.height() / 2), QColor(Qt::black));
}

void tst_ResultDelegate::elidesALongTextAtItsEnd()
{
    List list;
    list.add(QString(200, u'█'), QString(), u"/program"_s);
    list.add(QString(3, u'█') + QString(200, u'w'), QString(), u"/program"_s);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const int width = list.viewport()->width();
    QVERIFY(list.inkOf(0, true).right() < width);
    QVERIFY(list.inkOf(0, true).right() > width - 40);
    // Bold characters are wider, but the ellipsis still fits.
    list.delegate.setSearchTexts({QString(200, u'w')});
    QVERIFY(list.inkOf(1, true).right() < width - 1);
    QVERIFY(list.inkOf(1, true).right() > width / 2);
}

void tst_ResultDelegate::onlyAnElidedRowHasAToolTip()
{
    List list;
    list.add(u"short"_s);
    list.add(QString(200, u'w'));
    list.addRecord({{u"title"_s, u"t"_s}, {u"subtitle"_s, u"a\u202e"_s + QString(200, u's')}});
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QCOMPARE(list.toolTipOf(0), QString());
    QVERIFY(list.toolTipOf(1).contains(QString(200, u'w')));
    QVERIFY(list.toolTipOf(1).contains(u"subtitle"_s));
    QVERIFY(list.toolTipOf(2).contains(u"a⟨U+202E⟩"_s + QString(200, u's')));
    QCOMPARE(list.toolTipOf(0), QString());
}

void tst_ResultDelegate::toolTipIsPlainText()
{
    List list;
    list.add(u"<b>&amp;"_s + QString(200, u'w'));
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QVERIFY(list.toolTipOf(0).contains(u"&lt;b&gt;&amp;amp;"_s));
}

VASKEL_TEST(tst_ResultDelegate, QApplication)
#include "tst_ResultDelegate.moc"
