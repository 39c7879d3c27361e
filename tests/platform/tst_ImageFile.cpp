// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ImageFile.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QTest>

#include <numeric>

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

// An ICO file of square images: a header, one entry of 16 bytes for each image, and the images.
QByteArray icoOf(const QList<int> &sides)
{
    constexpr quint16 iconType = 1;
    QByteArray images;
    QByteArray file;
    QDataStream entries(&file, QIODevice::WriteOnly);
    entries.setByteOrder(QDataStream::LittleEndian);
    entries << quint16(0) << iconType << quint16(sides.size());
    for (const int side : sides) {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(Qt::red);
        QBuffer png;
        image.save(&png, "PNG");
        const quint64 sizesAndColors = 0; // those of the PNG image count
        entries << sizesAndColors << quint32(png.size())
                << quint32(6 + 16 * sides.size() + images.size());
        images += png.data();
    }
    return file + images;
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
    void iconHasAFewImagesOfAFile_data();
    void iconHasAFewImagesOfAFile();
    void imageIsReducedToTheSize_data() { iconOfAnotherFormatIsThatOfQIcon_data(); }
    void imageIsReducedToTheSize();
    void imageOfAnIconIsTheFirst();
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

void tst_ImageFile::iconHasAFewImagesOfAFile_data()
{
    QTest::addColumn<QList<int>>("sides");
    QTest::addColumn<int>("count");
    QTest::newRow("usual") << QList<int>{16, 24, 32, 48, 64, 128, 256} << 7;
    QList<int> many(100);
    std::iota(many.begin(), many.end(), 1);
    QTest::newRow("many") << many << 32;
    QTest::newRow("large") << QList<int>{2048, 2049, 2050, 2051, 2052} << 4;
}

void tst_ImageFile::iconHasAFewImagesOfAFile()
{
    QFETCH(const QList<int>, sides);
    const QIcon icon = platform::iconOfImageFile(testhome::writeFile(u"a.ico"_s, icoOf(sides)));
    QTEST(int(icon.availableSizes().size()), "count");
    QCOMPARE(icon.pixmap(16, 16).toImage().pixelColor(0, 0), QColor(Qt::red));
}

void tst_ImageFile::imageIsReducedToTheSize()
{
    QFETCH(const QString, name);
    const QString path = writePicture(name, name == "a.png"_L1 ? "PNG" : "BMP");
    QCOMPARE(platform::readImage(path, QSize(32, 32)).size(), QSize(16, 8));
    QCOMPARE(platform::readImage(path, QSize(8, 8)).size(), QSize(8, 4));
    QCOMPARE(platform::readImage(path, QSize(8, 8)).toImage().pixelColor(4, 2), QColor(Qt::red));
}

void tst_ImageFile::imageOfAnIconIsTheFirst()
{
    const QString path = testhome::writeFile(u"a.ico"_s, icoOf({16, 32}));
    QCOMPARE(platform::readImage(path, QSize(64, 64)).size(), QSize(16, 16));
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
