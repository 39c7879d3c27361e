// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ImageFile.h"

#include "platform/linux/IconThemeFiles.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using iconthemefiles::colorOf;

/// Runs on a screen with a factor of 2, for which Qt looks for a larger image beside one. A reader
/// that waits for a pipe runs into the time limit of the test.
class tst_ImageFile : public QObject
{
    Q_OBJECT

public:
    static int main(int argc, char *argv[]);

private Q_SLOTS:
    void init();

    void readsAnImage_data();
    void readsAnImage();
    void drawsAVectorImageAtTheSize();
    void readsTheLargerImageBesideIt();
    void drawsAVectorImageForEachFactor();
    void waitsForNoPipeBesideAnImage();
    void readsNoVectorImageThatNamesFiles_data();
    void readsNoVectorImageThatNamesFiles();
    void readsNothingElse_data();
    void readsNothingElse();
};

namespace {

QString homePath(const QString &name)
{
    return testhome::path() + u'/' + name;
}

QByteArray png(const QColor &color, int side = 32)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(color);
    QByteArray data;
    QBuffer buffer(&data);
    if (!image.save(&buffer, "PNG")) {
        qFatal("cannot make an image");
    }
    return data;
}

QByteArray svg(const QByteArray &content, const QByteArray &attributes = {})
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "width='10' height='10'"
           + attributes + "><rect width='10' height='10' fill='red'/>" + content + "</svg>";
}

QByteArray imageElement(const QByteArray &address, const QByteArray &attribute = "xlink:href")
{
    return "<image " + attribute + "='" + address + "' width='10' height='10'/>";
}

QByteArray pipe()
{
    return QFile::encodeName(homePath(u"pipe"_s));
}

} // namespace

void tst_ImageFile::init()
{
    testhome::reset();
    QCOMPARE(::mkfifo(pipe().constData(), S_IRWXU), 0);
}

void tst_ImageFile::readsAnImage_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QColor>("color");
    QTest::newRow("pixels") << png(Qt::green) << QColor(Qt::green);
    QTest::newRow("vectors") << svg({}) << QColor(Qt::red);
    QTest::newRow("vectors with pixels in them")
        << svg(imageElement("data:image/png;base64," + png(Qt::blue).toBase64()))
        << QColor(Qt::blue);
    QTest::newRow("vectors with a link for the reader")
        << svg("<a xlink:href='https://host.example/'/>") << QColor(Qt::red);
}

void tst_ImageFile::readsAnImage()
{
    QFETCH(QByteArray, content);
    const QString path = testhome::writeFile(u"a"_s, content);
    QTEST(colorOf(platform::iconOfImageFile(path)), "color");
    QTEST(platform::readImage(path, QSize(10, 10)).toImage().pixelColor(5, 5), "color");
}

void tst_ImageFile::drawsAVectorImageAtTheSize()
{
    const QString path = testhome::writeFile(u"a.svg"_s, svg({}));
    QCOMPARE(platform::readImage(path, QSize(32, 32)).size(), QSize(32, 32));
    QCOMPARE(platform::readImage(path, QSize(8, 16)).size(), QSize(8, 8));
}

void tst_ImageFile::readsTheLargerImageBesideIt()
{
    const QString path = testhome::writeFile(u"a.png"_s, png(Qt::green));
    testhome::writeFile(u"a@2x.png"_s, png(Qt::blue, 64));
    const QPixmap pixmap = platform::iconOfImageFile(path).pixmap(QSize(32, 32), 2);
    QCOMPARE(pixmap.size(), QSize(64, 64));
    QCOMPARE(pixmap.toImage().pixelColor(32, 32), QColor(Qt::blue));
}

void tst_ImageFile::drawsAVectorImageForEachFactor()
{
    const QIcon icon = platform::iconOfImageFile(testhome::writeFile(u"a.svg"_s, svg({})));
    QCOMPARE(icon.pixmap(QSize(32, 32), 1).size(), QSize(32, 32));
    QCOMPARE(icon.pixmap(QSize(32, 32), 2).size(), QSize(64, 64));
    QCOMPARE(icon.pixmap(QSize(32, 32), 3).size(), QSize(96, 96));
}

void tst_ImageFile::waitsForNoPipeBesideAnImage()
{
    const QString path = testhome::writeFile(u"a.png"_s, png(Qt::green));
    QVERIFY(QFile::link(homePath(u"pipe"_s), homePath(u"a@2x.png"_s)));
    QCOMPARE(colorOf(platform::iconOfImageFile(path)), QColor(Qt::green));
}

void tst_ImageFile::readsNoVectorImageThatNamesFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("image") << svg(imageElement(pipe()));
    QTest::newRow("image, without its namespace")
        << "<svg width='10' height='10'>" + imageElement(pipe()) + "</svg>";
    QTest::newRow("image with a prefix") << svg(imageElement(pipe()).replace("<image", "<s:image"),
                                                " xmlns:s='http://www.w3.org/2000/svg'");
    QTest::newRow("image behind an entity")
        << "<!DOCTYPE svg [<!ENTITY p '" + pipe() + "'>]>" + svg(imageElement("&p;"));
    QTest::newRow("image in an embedded one")
        << svg(imageElement("data:image/svg+xml;base64," + svg(imageElement(pipe())).toBase64()));
    QTest::newRow("style sheet") << R"(<?xml-stylesheet type="text/css" href=")" + pipe() + R"("?>)"
                                        + svg({});
}

void tst_ImageFile::readsNoVectorImageThatNamesFiles()
{
    QFETCH(QByteArray, content);
    for (const QString &name : {u"a.svg"_s, u"a.png"_s}) {
        const QString path = testhome::writeFile(name, content);
        QVERIFY(platform::iconOfImageFile(path).isNull());
        QVERIFY(platform::readImage(path, QSize(32, 32)).isNull());
    }
}

void tst_ImageFile::readsNothingElse_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("pipe") << homePath(u"pipe"_s);
    QTest::newRow("endless device") << u"/dev/zero"_s;
    QTest::newRow("folder") << testhome::path();
    QTest::newRow("missing") << homePath(u"missing.png"_s);
    QTest::newRow("empty name") << QString();
}

void tst_ImageFile::readsNothingElse()
{
    QFETCH(QString, path);
    QVERIFY(platform::iconOfImageFile(path).isNull());
    QVERIFY(platform::readImage(path, QSize(32, 32)).isNull());
}

int tst_ImageFile::main(int argc, char *argv[])
{
    qputenv("QT_SCALE_FACTOR", "2");
    QGuiApplication application(argc, argv);
    tst_ImageFile test;
    return QTest::qExec(&test, argc, argv);
}

VASKEL_TEST_WITH_MAIN(tst_ImageFile, tst_ImageFile::main)
#include "tst_ImageFile.moc"
