// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PaintedSize.h"

#include "platform/ImageFile.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "ui/ResultDelegate.h"
#include "ui/ResultItem.h"

#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString save(const QImage &image, const QString &name)
{
    QString path = testhome::path() + u'/' + name;
    if (!image.save(path)) {
        qFatal("the picture cannot be written");
    }
    return path;
}

QImage plain(int size, Qt::GlobalColor color)
{
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Black and white columns of one pixel, which only a sharp picture shows.
QImage stripes(int size)
{
    QImage image = plain(size, Qt::white);
    for (int x = 0; x < size; x += 2) {
        QPainter(&image).fillRect(x, 0, 1, size, Qt::black);
    }
    return image;
}

} // namespace

/// The icons on a screen with the factor 2.
class tst_IconFactors : public QObject
{
    Q_OBJECT

public:
    static int main(int argc, char *argv[]);

private Q_SLOTS:
    void init();
    void readsTheFileOfTheFactor();
    void readsAnIconWithoutOne();
    void paintsTheSizeOfTheFirstFile_data();
    void paintsTheSizeOfTheFirstFile();
    void rowPaintsTheFileOfTheFactorSharply();
};

void tst_IconFactors::init()
{
    testhome::reset();
    QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio(), 2.0);
}

void tst_IconFactors::readsTheFileOfTheFactor()
{
    const QString path = save(plain(32, Qt::red), u"a.png"_s);
    save(plain(64, Qt::blue), u"a@2x.png"_s);
    const QIcon icon = platform::iconOfImageFile(path);
    QCOMPARE(icon.availableSizes(), QList<QSize>({QSize(32, 32), QSize(64, 64)}));
    const auto colorAt = [&icon](qreal factor) {
        return icon.pixmap(QSize(32, 32), factor).toImage().pixelColor(8, 8);
    };
    QCOMPARE(colorAt(1), QColor(Qt::red));
    QCOMPARE(colorAt(2), QColor(Qt::blue));
}

void tst_IconFactors::readsAnIconWithoutOne()
{
    const QIcon icon = platform::iconOfImageFile(save(plain(32, Qt::red), u"a.png"_s));
    QCOMPARE(icon.availableSizes(), QList<QSize>{QSize(32, 32)});
}

void tst_IconFactors::paintsTheSizeOfTheFirstFile_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<int>("painted");
    QTest::newRow("smaller than the space") << 32 << 64 << 32;
    QTest::newRow("alone") << 32 << 0 << 32;
    QTest::newRow("larger than the space") << 64 << 0 << 40;
    QTest::newRow("no file") << 0 << 0 << 40;
}

void tst_IconFactors::paintsTheSizeOfTheFirstFile()
{
    QFETCH(int, first);
    QFETCH(int, second);
    QFETCH(int, painted);
    QIcon icon;
    for (const int size : {first, second}) {
        if (size > 0) {
            icon.addPixmap(QPixmap::fromImage(plain(size, Qt::red)));
        }
    }
    QCOMPARE(paintedSize(icon, QSize(40, 40)), QSize(painted, painted));
}

void tst_IconFactors::rowPaintsTheFileOfTheFactorSharply()
{
    const QString path = save(plain(32, Qt::red), u"a.png"_s);
    save(stripes(64), u"a@2x.png"_s);
    QListWidget list;
    list.setItemDelegate(new ResultDelegate(&list));
    list.setIconSize(QSize(40, 40));
    list.setFocusPolicy(Qt::NoFocus);
    list.setGeometry(100, 100, 300, 300); // not below the pointer
    list.addItem(new ResultItem({{u"name"_s, u" "_s}, {u"icon"_s, path}}));
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const QImage row = list.viewport()->grab(list.visualItemRect(list.item(0))).toImage();
    QCOMPARE(row.devicePixelRatio(), 2.0);
    int black = 0;
    int others = 0;
    for (int x = 0; x < 100; ++x) {
        const QColor color = row.pixelColor(x, row.height() / 2);
        black += color == Qt::black;
        others += color != Qt::black && color != Qt::white;
    }
    QCOMPARE(black, 32);
    QCOMPARE(others, 0);
}

int tst_IconFactors::main(int argc, char *argv[])
{
    qputenv("QT_SCALE_FACTOR", "2");
    return testprogram::run<tst_IconFactors, QApplication>(argc, argv);
}

VASKEL_TEST_WITH_MAIN(tst_IconFactors, tst_IconFactors::main)
#include "tst_IconFactors.moc"
