// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/IconCache.h"

#include "platform/ImageFile.h"
#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;
using platform::iconFileOfFactor;

namespace {

QPixmap plainPixmap(int size, Qt::GlobalColor color = Qt::red)
{
    QPixmap pixmap(size, size);
    pixmap.fill(color);
    return pixmap;
}

QString addFile(int size)
{
    QString path = testhome::writeFile(u"menu/App.link"_s, {});
    fakePlatform().linkIcons.insert(path, QIcon(plainPixmap(size)));
    return path;
}

} // namespace

/// The icon files on a screen with the factor 1.5.
class tst_IconCacheFactors : public QObject
{
    Q_OBJECT

public:
    static int main(int argc, char *argv[]);

private Q_SLOTS:
    void init();
    void cleanupTestCase() { fakePlatform() = FakePlatform(); }

    void writesTheFileOfTheNextWholeFactor_data();
    void writesTheFileOfTheNextWholeFactor();
    void keepsTheDetailsOfTheIcon();
    void addsTheFileToAnEarlierOne();
    void usesAStaleFile();
    void asksTheShellForALargerIcon();
    void writesOneFileOfAnUnscaledIcon();
};

void tst_IconCacheFactors::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio(), 1.5);
}

void tst_IconCacheFactors::writesTheFileOfTheNextWholeFactor_data()
{
    QTest::addColumn<int>("drawn");
    QTest::newRow("large") << 256;
    QTest::newRow("as large as needed") << 64;
    QTest::newRow("small") << 16;
}

void tst_IconCacheFactors::writesTheFileOfTheNextWholeFactor()
{
    QFETCH(int, drawn);
    const QString icon = IconCache(makeIconFolder()).iconFile(addFile(drawn));
    QCOMPARE(QImage(icon, "PNG").size(), QSize(32, 32));
    QCOMPARE(QImage(iconFileOfFactor(icon, 2), "PNG").size(), QSize(64, 64));
    QVERIFY(!QFile::exists(iconFileOfFactor(icon, 3)));
}

void tst_IconCacheFactors::keepsTheDetailsOfTheIcon()
{
    QImage stripes(64, 64, QImage::Format_ARGB32);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            stripes.setPixelColor(x, y, x % 2 ? Qt::black : Qt::white);
        }
    }
    const QString path = addFile(64);
    fakePlatform().linkIcons.insert(path, QIcon(QPixmap::fromImage(stripes)));
    const QString icon = IconCache(makeIconFolder()).iconFile(path);
    QImage saved(iconFileOfFactor(icon, 2));
    saved.setDevicePixelRatio(1); // QImage takes it from the name
    QCOMPARE(saved.convertToFormat(QImage::Format_ARGB32), stripes);
}

void tst_IconCacheFactors::addsTheFileToAnEarlierOne()
{
    const QString path = addFile(64);
    const QString icon = IconCache(makeIconFolder()).iconFile(path);
    QVERIFY(QFile::remove(iconFileOfFactor(icon, 2)));
    QVERIFY(plainPixmap(3).save(icon));
    QCOMPARE(IconCache(makeIconFolder()).iconFile(path), icon);
    QCOMPARE(QImage(icon).size(), QSize(3, 3));
    QCOMPARE(QImage(iconFileOfFactor(icon, 2)).size(), QSize(64, 64));
}

void tst_IconCacheFactors::usesAStaleFile()
{
    const QString path = addFile(64);
    const QString icon = IconCache(makeIconFolder()).iconFile(path);
    QVERIFY(plainPixmap(5).save(iconFileOfFactor(icon, 2)));
    IconCache(makeIconFolder()).iconFile(path);
    QCOMPARE(QImage(iconFileOfFactor(icon, 2)).size(), QSize(5, 5));
}

void tst_IconCacheFactors::asksTheShellForALargerIcon()
{
    fakePlatform().shellPixmaps.insert(u"command"_s, plainPixmap(256, Qt::blue));
    const QString icon = IconCache(makeIconFolder(), {.asksShell = true}).iconFile(u"command"_s);
    const QImage larger(iconFileOfFactor(icon, 2));
    QCOMPARE(larger.size(), QSize(64, 64));
    QCOMPARE(larger.pixelColor(32, 32), QColor(Qt::blue));
    QCOMPARE(fakePlatform().shellPixmapWidths, QList<int>({32, 64}));
}

void tst_IconCacheFactors::writesOneFileOfAnUnscaledIcon()
{
    const QString icon = IconCache(makeIconFolder(), {.prefix = u"kind_"_s, .isScaled = false})
                             .iconFile(addFile(64));
    QVERIFY(QFile::exists(icon));
    QVERIFY(!QFile::exists(iconFileOfFactor(icon, 2)));
}

int tst_IconCacheFactors::main(int argc, char *argv[])
{
    qputenv("QT_SCALE_FACTOR", "1.5");
    return testprogram::run<tst_IconCacheFactors, QApplication>(argc, argv);
}

VASKEL_TEST_WITH_MAIN(tst_IconCacheFactors, tst_IconCacheFactors::main)
#include "tst_IconCacheFactors.moc"
