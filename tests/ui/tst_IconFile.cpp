// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/IconFile.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString writePicture(const QString &name, const char *format)
{
    QString path = testhome::path() + u'/' + name;
    QImage image(16, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    if (!image.save(path, format)) {
        qFatal("the picture cannot be written");
    }
    return path;
}

QColor colorOf(const QIcon &icon)
{
    return icon.pixmap(QSize(16, 8), 1.0).toImage().pixelColor(8, 4);
}

} // namespace

class tst_IconFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAPngFile();
    void readsAPngResource();
    void readsNoOtherFile_data();
    void readsNoOtherFile();
    void iconOfAPngFileIsReadAtOnce();
    void iconOfAnotherFormatIsThatOfQIcon_data();
    void iconOfAnotherFormatIsThatOfQIcon();
    void iconOfAMissingFileDrawsNothing();
    void iconLeavesNothingInTheCache_data() { iconOfAnotherFormatIsThatOfQIcon_data(); }
    void iconLeavesNothingInTheCache();
};

void tst_IconFile::readsAPngFile()
{
    const QPixmap pixmap = readPng(writePicture(u"a.png"_s, "PNG"));
    QCOMPARE(pixmap.size(), QSize(16, 8));
    QCOMPARE(pixmap.toImage().pixelColor(8, 4), QColor(Qt::red));
}

void tst_IconFile::readsAPngResource()
{
    QCOMPARE(readPng(u":/assets/icons/32.png"_s).size(), QSize(32, 32));
}

void tst_IconFile::readsNoOtherFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("another format") << writePicture(u"a.bmp"_s, "BMP");
    QTest::newRow("another format under its name") << writePicture(u"b.png"_s, "BMP");
    QTest::newRow("text") << testhome::writeFile(u"c.png"_s, "no picture");
    QTest::newRow("empty") << testhome::writeFile(u"d.png"_s, "");
    QTest::newRow("folder") << testhome::path();
    QTest::newRow("missing") << testhome::path() + "/e.png"_L1;
    QTest::newRow("no path") << QString();
}

void tst_IconFile::readsNoOtherFile()
{
    QFETCH(QString, path);
    QVERIFY(readPng(path).isNull());
}

void tst_IconFile::iconOfAPngFileIsReadAtOnce()
{
    const QString path = writePicture(u"a.png"_s, "PNG");
    const QIcon icon = iconOfFile(path);
    QVERIFY(QFile::remove(path));
    QCOMPARE(icon.availableSizes(), QList<QSize>{QSize(16, 8)});
    QCOMPARE(colorOf(icon), QColor(Qt::red));
}

void tst_IconFile::iconOfAnotherFormatIsThatOfQIcon_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("another format") << u"a.bmp"_s;
    QTest::newRow("another format under its name") << u"a.png"_s;
}

void tst_IconFile::iconOfAnotherFormatIsThatOfQIcon()
{
    QFETCH(QString, name);
    QCOMPARE(colorOf(iconOfFile(writePicture(name, "BMP"))), QColor(Qt::red));
}

void tst_IconFile::iconOfAMissingFileDrawsNothing()
{
    QVERIFY(iconOfFile(testhome::path() + "/missing.png"_L1).pixmap(16, 16).isNull());
}

// QIcon's own engine answers the second time from the cache.
void tst_IconFile::iconLeavesNothingInTheCache()
{
    QFETCH(QString, name);
    for (const char *format : {"BMP", "PNG"}) {
        const QIcon icon = iconOfFile(writePicture(name, format));
        const QPixmap first = icon.pixmap(8, 4);
        const QPixmap second = icon.pixmap(8, 4);
        QCOMPARE(first.size(), QSize(8, 4));
        QCOMPARE(second.toImage(), first.toImage());
        QVERIFY(second.cacheKey() != first.cacheKey());
    }
}

VASKEL_TEST(tst_IconFile, QApplication)
#include "tst_IconFile.moc"
