// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ImageFile.h"

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

class tst_ImageFile : public QObject
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
    void iconOfALargeFileIsNull_data();
    void iconOfALargeFileIsNull();
    void iconLeavesNothingInTheCache_data() { iconOfAnotherFormatIsThatOfQIcon_data(); }
    void iconLeavesNothingInTheCache();
    void namesTheFileOfAFactor();
};

void tst_ImageFile::readsAPngFile()
{
    const QPixmap pixmap = platform::readPng(writePicture(u"a.png"_s, "PNG"));
    QCOMPARE(pixmap.size(), QSize(16, 8));
    QCOMPARE(pixmap.toImage().pixelColor(8, 4), QColor(Qt::red));
}

void tst_ImageFile::readsAPngResource()
{
    QCOMPARE(platform::readPng(u":/assets/icons/32.png"_s).size(), QSize(32, 32));
}

void tst_ImageFile::readsNoOtherFile_data()
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

void tst_ImageFile::readsNoOtherFile()
{
    QFETCH(QString, path);
    QVERIFY(platform::readPng(path).isNull());
}

void tst_ImageFile::iconOfAPngFileIsReadAtOnce()
{
    const QString path = writePicture(u"a.png"_s, "PNG");
    const QIcon icon = platform::iconOfImageFile(path);
    QVERIFY(QFile::remove(path));
    QCOMPARE(icon.availableSizes(), QList<QSize>{QSize(16, 8)});
    QCOMPARE(colorOf(icon), QColor(Qt::red));
}

void tst_ImageFile::iconOfAnotherFormatIsThatOfQIcon_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("another format") << u"a.bmp"_s;
    QTest::newRow("another format under its name") << u"a.png"_s;
}

void tst_ImageFile::iconOfAnotherFormatIsThatOfQIcon()
{
    QFETCH(QString, name);
    QCOMPARE(colorOf(platform::iconOfImageFile(writePicture(name, "BMP"))), QColor(Qt::red));
}

void tst_ImageFile::iconOfAMissingFileDrawsNothing()
{
    QVERIFY(
        platform::iconOfImageFile(testhome::path() + "/missing.png"_L1).pixmap(16, 16).isNull());
}

void tst_ImageFile::iconOfALargeFileIsNull_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("PNG") << QByteArray("PNG");
    QTest::newRow("another format") << QByteArray("BMP");
}

// The readers ignore what follows the picture.
void tst_ImageFile::iconOfALargeFileIsNull()
{
    constexpr qint64 maximum = 16 * 1024 * 1024;
    QFETCH(QByteArray, format);
    QFile file(writePicture(u"a.png"_s, format.constData()));
    QVERIFY(file.resize(maximum));
    QCOMPARE(colorOf(platform::iconOfImageFile(file.fileName())), QColor(Qt::red));
    QVERIFY(file.resize(maximum + 1));
    QVERIFY(platform::iconOfImageFile(file.fileName()).isNull());
}

// QIcon's own engine answers the second time from the cache.
void tst_ImageFile::iconLeavesNothingInTheCache()
{
    QFETCH(QString, name);
    for (const char *format : {"BMP", "PNG"}) {
        const QIcon icon = platform::iconOfImageFile(writePicture(name, format));
        const QPixmap first = icon.pixmap(8, 4);
        const QPixmap second = icon.pixmap(8, 4);
        QCOMPARE(first.size(), QSize(8, 4));
        QCOMPARE(second.toImage(), first.toImage());
        QVERIFY(second.cacheKey() != first.cacheKey());
    }
}

void tst_ImageFile::namesTheFileOfAFactor()
{
    QCOMPARE(platform::iconFileOfFactor(u"/a.b/icon.png"_s, 2), u"/a.b/icon@2x.png"_s);
    QCOMPARE(platform::iconFileOfFactor(u"/a.b/icon.png"_s, 3), u"/a.b/icon@3x.png"_s);
    QCOMPARE(platform::iconFileOfFactor(u"icon"_s, 2), QString());
    QCOMPARE(platform::iconFileOfFactor(u"/a.b/icon"_s, 2), QString());
}

VASKEL_TEST(tst_ImageFile, QApplication)
#include "tst_ImageFile.moc"
