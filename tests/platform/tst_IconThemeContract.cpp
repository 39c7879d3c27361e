// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/IconTheme.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_IconThemeContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void leavesTheThemeOfTheDesktop();
    void hasNoIconForAFolderOrAFileWithoutASuffix();
};

void tst_IconThemeContract::leavesTheThemeOfTheDesktop()
{
    testhome::writeFile(u"icons/desktop/index.theme"_s,
                        "[Icon Theme]\nName=desktop\nComment=desktop\nDirectories=all\n\n"
                        "[all]\nSize=32\nType=Fixed\n");
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(Qt::red);
    const QString folder = testhome::path() + "/icons/desktop/all"_L1;
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(image.save(folder + "/own.png"_L1));
    QIcon::setThemeSearchPaths({testhome::path() + "/icons"_L1});
    QIcon::setThemeName(u"desktop"_s);
    const QString fallback = QIcon::fallbackThemeName();

    for (int call = 0; call < 2; ++call) {
        platform::ensureIconTheme();
        QCOMPARE(QIcon::themeName(), u"desktop"_s);
        QCOMPARE(QIcon::fallbackThemeName(), fallback);
        const QImage icon = QIcon::fromTheme(u"own"_s).pixmap(QSize(32, 32)).toImage();
        QCOMPARE(icon.pixelColor(16, 16), QColor(Qt::red));
    }
}

void tst_IconThemeContract::hasNoIconForAFolderOrAFileWithoutASuffix()
{
    platform::ensureIconTheme();
    QVERIFY(QDir(testhome::path()).mkpath(u"folder.png"_s));
    QVERIFY(platform::fileTypeIcon(QFileInfo(testhome::path() + "/folder.png"_L1)).isNull());
    const QString path = testhome::writeFile(u"none"_s, "text");
    QVERIFY(platform::fileTypeIcon(QFileInfo(path)).isNull());
    QVERIFY(platform::fileTypeIcon(QFileInfo(testhome::path() + "/missing.png"_L1)).isNull());
}

VASKEL_TEST(tst_IconThemeContract, QApplication)
#include "tst_IconThemeContract.moc"
