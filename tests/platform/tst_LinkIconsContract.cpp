// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LinkIcons.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFileIconProvider>
#include <QFileInfo>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_LinkIconsContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void showsTheIconOfTheLink();
    void leavesOtherFilesToTheProvider_data();
    void leavesOtherFilesToTheProvider();
    void leavesADamagedLinkToTheProvider();
};

void tst_LinkIconsContract::showsTheIconOfTheLink()
{
    const QString path = world::installWithIcon(u"program"_s);
    QIcon icon = platform::LinkIcons().icon(path);
    if (icon.isNull()) {
        icon = QFileIconProvider().icon(QFileInfo(path));
    }
    const QImage image = icon.pixmap(QSize(32, 32), QIcon::Normal, QIcon::Off).toImage();
    QCOMPARE(image.size(), QSize(32, 32));
    QCOMPARE(image.pixelColor(16, 16), QColor(Qt::red));
}

void tst_LinkIconsContract::leavesOtherFilesToTheProvider_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing") << QString();
    QTest::newRow("command") << u"notepad"_s;
    QTest::newRow("missing file") << testhome::path() + "/missing.txt"_L1;
    QTest::newRow("folder") << testhome::path();
    QTest::newRow("address") << u"https://example.org/"_s;
}

void tst_LinkIconsContract::leavesOtherFilesToTheProvider()
{
    QFETCH(QString, path);
    QVERIFY(platform::LinkIcons().icon(path).isNull());
}

void tst_LinkIconsContract::leavesADamagedLinkToTheProvider()
{
    const QString path = world::installWithIcon(u"program"_s);
    world::damage(path);
    QVERIFY(platform::LinkIcons().icon(path).isNull());
}

VASKEL_TEST(tst_LinkIconsContract, QApplication)
#include "tst_LinkIconsContract.moc"
