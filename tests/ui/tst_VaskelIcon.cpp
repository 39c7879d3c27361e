// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/VaskelIcon.h"

#include "support/TestProgram.h"

#include <QFile>
#include <QIcon>
#include <QImage>
#include <QTest>

#include <cstdlib>

using namespace Qt::StringLiterals;

class tst_VaskelIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void masterHasItsSize();
    void hasTheSizesThatAreShown_data();
    void hasTheSizesThatAreShown();
    void leavesTheMasterOut();
    void paintsThePixelsOfThePngFile_data() { hasTheSizesThatAreShown_data(); }
    void paintsThePixelsOfThePngFile();
};

namespace {

// Premultiplied: the colours of transparent pixels do not matter.
QImage comparable(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

double meanDifference(const QImage &one, const QImage &other)
{
    const QImage first = comparable(one);
    const QImage second = comparable(other);
    qint64 sum = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (qsizetype byte = 0; byte < first.bytesPerLine(); ++byte) {
            sum += std::abs(first.constScanLine(y)[byte] - second.constScanLine(y)[byte]);
        }
    }
    return double(sum) / double(first.sizeInBytes());
}

} // namespace

void tst_VaskelIcon::masterHasItsSize()
{
    const QImage master(u":/assets/icon.png"_s);
    QCOMPARE(master.size(), QSize(1024, 1024));
    QVERIFY(master.hasAlphaChannel());
}

void tst_VaskelIcon::hasTheSizesThatAreShown_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        QTest::addRow("%d", size) << size;
    }
}

void tst_VaskelIcon::hasTheSizesThatAreShown()
{
    QFETCH(int, size);
    const QImage image = vaskelIcon().pixmap(QSize(size, size), 1.0).toImage();
    QCOMPARE(image.size(), QSize(size, size));

    const QImage master(u":/assets/icon.png"_s);
    const QImage expected =
        master.scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QVERIFY2(meanDifference(image, expected) < 6, "not a picture of the same drawing");
}

void tst_VaskelIcon::leavesTheMasterOut()
{
    const QList<QSize> sizes = vaskelIcon().availableSizes();
    QVERIFY(!sizes.contains(QSize(1024, 1024)));
    QCOMPARE(sizes.size(), 7);
}

void tst_VaskelIcon::paintsThePixelsOfThePngFile()
{
    QFETCH(int, size);
    const QImage expected(u":/assets/icons/%1.png"_s.arg(size));
    QCOMPARE(expected.size(), QSize(size, size));
    QCOMPARE(comparable(vaskelIcon().pixmap(QSize(size, size), 1.0).toImage()),
             comparable(expected));

    QFile pixels(u":/assets/icons/%1.argb"_s.arg(size));
    QVERIFY(pixels.open(QIODevice::ReadOnly));
    const QByteArray content = pixels.readAll();
    QCOMPARE(content.size(), qsizetype(size) * size * 4);
    const QImage read(reinterpret_cast<const uchar *>(content.constData()), size, size,
                      QImage::Format_ARGB32_Premultiplied);
    if (QSysInfo::ByteOrder == QSysInfo::LittleEndian) {
        QCOMPARE(read, comparable(expected));
    }
}

VASKEL_TEST(tst_VaskelIcon, QApplication)
#include "tst_VaskelIcon.moc"
