// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShellPixmap.h"

#include "platform/windows/PixmapFromHicon.h"
#include "platform/windows/Recording.h"
#include "platform/windows/ShellLink.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include "launcher/AppLauncher.h"
#include "platform/StartMenu.h"

#include <QFile>
#include <QImage>
#include <QTest>

#include <array>
#include <memory>
#include <type_traits>
#include <vector>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

struct DestroyIconCall
{
    void operator()(HICON icon) const { DestroyIcon(icon); }
};
using Icon = std::unique_ptr<std::remove_pointer_t<HICON>, DestroyIconCall>;

Icon makeIcon(const QImage &image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    const std::vector<uchar> mask(size_t(image.height()) * size_t((image.width() + 15) / 16 * 2));
    ICONINFO info{};
    info.fIcon = TRUE;
    info.hbmColor = CreateBitmap(image.width(), image.height(), 1, 32, pixels.constBits());
    info.hbmMask = CreateBitmap(image.width(), image.height(), 1, 1, mask.data());
    Icon icon(CreateIconIndirect(&info));
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return icon;
}

// An icon of black, white and inverted points, without a colour bitmap: the upper half of the
// bitmap says where it covers, the lower half what it shows there.
Icon makeMaskOnlyIcon()
{
    std::array<uchar, 32 * 2 * 4> bits{};
    bits.fill(0x55);
    ICONINFO info{};
    info.fIcon = TRUE;
    info.hbmMask = CreateBitmap(32, 64, 1, 1, bits.data());
    Icon icon(CreateIconIndirect(&info));
    DeleteObject(info.hbmMask);
    return icon;
}

QImage quarters()
{
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(qRgba(0xff, 0, 0, 0xff));
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            image.setPixel(x + 16, y, qRgba(0, 0xff, 0, 0xff));
            image.setPixel(x, y + 16, qRgba(0, 0, 0xff, 0xff));
            image.setPixel(x + 16, y + 16, 0);
        }
    }
    return image;
}

// How many more objects of this kind the system gives to this process. Each leaked object makes it
// one less.
template <typename Make, typename Destroy> qsizetype leftOver(Make make, Destroy destroy)
{
    std::vector<decltype(make())> objects;
    while (auto object = make()) {
        objects.push_back(object);
    }
    for (auto object : objects) {
        destroy(object);
    }
    return qsizetype(objects.size());
}

qsizetype leftGdiHandles()
{
    return leftOver([] { return CreateRectRgn(0, 0, 1, 1); },
                    [](HRGN region) { DeleteObject(region); });
}

qsizetype leftUserHandles()
{
    return leftOver([] { return CreateMenu(); }, [](HMENU menu) { DestroyMenu(menu); });
}

} // namespace

class tst_ShellPixmap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsEveryColourInItsPlace();
    void keepsTheSizeOfTheIcon();
    void givesNothingForAnIconWithoutColours();
    void givesNothingForNoIcon();
    void shellKnowsTheIconOfAnExecutable();
    void shellTakesForwardSlashes();
    void whatIsNoFileHasNoIconFileOrAValidOne_data();
    void whatIsNoFileHasNoIconFileOrAValidOne();
    void catalogueHasAnIconForTheLink();
    void pinOfAProgramShowsItsIcon();
    void staleIconFileIsUsed();
    void thousandExtractionsLeakNothing();
};

void tst_ShellPixmap::init()
{
    testhome::reset();
    recording::makeEmptyStartMenu();
}

void tst_ShellPixmap::keepsEveryColourInItsPlace()
{
    const Icon icon = makeIcon(quarters());
    QVERIFY(icon);
    const QImage image = platform::iconToPixmap(icon.get()).toImage();
    QCOMPARE(image.size(), QSize(32, 32));
    QCOMPARE(image.pixelColor(4, 4), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(28, 4), QColor(0, 255, 0));
    QCOMPARE(image.pixelColor(4, 28), QColor(0, 0, 255));
    QCOMPARE(image.pixelColor(28, 28).alpha(), 0);
}

void tst_ShellPixmap::keepsTheSizeOfTheIcon()
{
    QImage source(48, 24, QImage::Format_ARGB32);
    source.fill(qRgba(10, 20, 30, 255));
    const Icon icon = makeIcon(source);
    QVERIFY(icon);
    const QImage image = platform::iconToPixmap(icon.get()).toImage();
    QCOMPARE(image.size(), QSize(48, 24));
    QCOMPARE(image.pixelColor(47, 23), QColor(10, 20, 30));
}

void tst_ShellPixmap::givesNothingForAnIconWithoutColours()
{
    const Icon icon = makeMaskOnlyIcon();
    QVERIFY(icon);
    QVERIFY(platform::iconToPixmap(icon.get()).isNull());
}

void tst_ShellPixmap::givesNothingForNoIcon()
{
    QVERIFY(platform::iconToPixmap(nullptr).isNull());
}

void tst_ShellPixmap::shellKnowsTheIconOfAnExecutable()
{
    QVERIFY(!platform::shellPixmap(recording::program()).isNull());
}

// The shell would take an unconverted path for an unknown address.
void tst_ShellPixmap::shellTakesForwardSlashes()
{
    const QString path = recording::program();
    QVERIFY(path.contains(u'/'));
    QCOMPARE(platform::shellPixmap(path).toImage().pixelColor(16, 16), QColor(Qt::red));
}

void tst_ShellPixmap::whatIsNoFileHasNoIconFileOrAValidOne_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("settings") << u"ms-settings:"_s;
    QTest::newRow("address") << u"https://www.bing.com/"_s;
    QTest::newRow("command") << u"vaskel-no-such-command"_s;
}

void tst_ShellPixmap::whatIsNoFileHasNoIconFileOrAValidOne()
{
    QFETCH(QString, path);
    AppLauncher launcher;
    QVERIFY(launcher.pinApp(path, u"Pin"_s, {}));
    const QString icon = launcher.pinnedApps().last().toMap().value(u"icon"_s).toString();
    QCOMPARE(icon.isEmpty(), platform::shellPixmap(path).isNull());
    QVERIFY(icon.isEmpty() || !QPixmap(icon).isNull());
}

// Wine paints only the arrow of a link, whatever its icon; Windows paints both.
void tst_ShellPixmap::catalogueHasAnIconForTheLink()
{
    const QString path = platform::startMenuRoots().first() + "/Red Program.lnk"_L1;
    QVERIFY((ShellLink{recording::program(), {}, {}, {}}.write(path)));

    const QVariantList records = AppLauncher().search(u"Red Program"_s);
    QCOMPARE(records.size(), 1);
    const QImage image(records.first().toMap().value(u"icon"_s).toString());
    QCOMPARE(image.size(), QSize(32, 32));
    QCOMPARE(image.pixelColor(2, 28).alpha(), 255);
}

void tst_ShellPixmap::pinOfAProgramShowsItsIcon()
{
    AppLauncher launcher;
    QVERIFY(launcher.pinApp(recording::program(), u"Pin"_s, {}));
    const QImage image(launcher.pinnedApps().last().toMap().value(u"icon"_s).toString());
    QCOMPARE(image.size(), QSize(32, 32));
    QCOMPARE(image.pixelColor(16, 16), QColor(Qt::red));
}

void tst_ShellPixmap::staleIconFileIsUsed()
{
    const QString path = platform::startMenuRoots().first() + "/Program.lnk"_L1;
    QVERIFY((ShellLink{recording::program(), {}, {}, {}}.write(path)));
    const auto iconOf = [] {
        return AppLauncher().search(u"Program"_s).last().toMap().value(u"icon"_s).toString();
    };
    const QString icon = iconOf();
    QImage green(32, 32, QImage::Format_ARGB32);
    green.fill(Qt::green);
    QVERIFY(green.save(icon));
    QCOMPARE(iconOf(), icon);
    QCOMPARE(QImage(icon).pixelColor(8, 8), QColor(Qt::green));
}

void tst_ShellPixmap::thousandExtractionsLeakNothing()
{
    // The first calls fill the caches of the shell.
    const Icon maskOnly = makeMaskOnlyIcon();
    for (int i = 0; i < 10; ++i) {
        QVERIFY(!platform::shellPixmap(recording::program()).isNull());
    }
    const qsizetype gdiHandles = leftGdiHandles();
    const qsizetype userHandles = leftUserHandles();
    QVERIFY(gdiHandles > 1000);
    QVERIFY(userHandles > 1000);
    for (int i = 0; i < 1000; ++i) {
        QVERIFY(!platform::shellPixmap(recording::program()).isNull());
        QVERIFY(platform::iconToPixmap(maskOnly.get()).isNull());
    }
    QCOMPARE(leftGdiHandles(), gdiHandles);
    // These are shared by all programs of the session, which come and go.
    QVERIFY(leftUserHandles() > userHandles - 500);
}

VASKEL_TEST(tst_ShellPixmap, QApplication)
#include "tst_ShellPixmap.moc"
