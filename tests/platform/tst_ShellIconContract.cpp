// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShellIcon.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFileIconProvider>
#include <QFileInfo>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ShellIconContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void showsTheIconOfTheLink();
    void leavesOtherFilesToTheProvider_data();
    void leavesOtherFilesToTheProvider();
    void leavesADamagedLinkToTheProvider();
};

void tst_ShellIconContract::showsTheIconOfTheLink()
{
    const QString path = world::installWithIcon(u"program"_s);
    QIcon icon = platform::linkIcon(path);
    if (icon.isNull()) {
        icon = QFileIconProvider().icon(QFileInfo(path));
    }
    const QImage image = icon.pixmap(QSize(32, 32), QIcon::Normal, QIcon::Off).toImage();
    QCOMPARE(image.size(), QSize(32, 32));
    QCOMPARE(image.pixelColor(16, 16), QColor(Qt::red));
}

void tst_ShellIconContract::leavesOtherFilesToTheProvider_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing") << QString();
    QTest::newRow("command") << u"notepad"_s;
    QTest::newRow("missing file") << testhome::path() + "/missing.txt"_L1;
    QTest::newRow("folder") << testhome::path();
    QTest::newRow("address") << u"https://example.org/"_s;
}

void tst_ShellIconContract::leavesOtherFilesToTheProvider()
{
    QFETCH(QString, path);
    QVERIFY(platform::linkIcon(path).isNull());
}

void tst_ShellIconContract::leavesADamagedLinkToTheProvider()
{
    const QString path = world::installWithIcon(u"program"_s);
    world::damage(path);
    QVERIFY(platform::linkIcon(path).isNull());
}

VASKEL_TEST(tst_ShellIconContract, QApplication)
#include "tst_ShellIconContract.moc"
