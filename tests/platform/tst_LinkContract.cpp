// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_LinkContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void suffixIsPlainAndLowerCase();
    void linkHasTheSuffix_data();
    void linkHasTheSuffix();
    void startsTheProgram();
    void startsAHiddenProgram();
    void startsNothingFromADamagedFile();
};

void tst_LinkContract::suffixIsPlainAndLowerCase()
{
    const QString suffix = platform::linkSuffix();
    QVERIFY(!suffix.isEmpty());
    QCOMPARE(suffix, suffix.toLower());
    QVERIFY(!suffix.contains(u'.'));
}

void tst_LinkContract::linkHasTheSuffix_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isLink");
    const QString suffix = platform::linkSuffix();
    QTest::newRow("file") << "/folder/a."_L1 + suffix << true;
    QTest::newRow("capitals") << "A."_L1 + suffix.toUpper() << true;
    QTest::newRow("suffix alone") << suffix << false;
    QTest::newRow("no dot") << u'a' + suffix << false;
    QTest::newRow("further suffix") << "a."_L1 + suffix + ".txt"_L1 << false;
    QTest::newRow("empty") << QString() << false;
}

void tst_LinkContract::linkHasTheSuffix()
{
    QFETCH(QString, path);
    QTEST(platform::isLink(path), "isLink");
}

void tst_LinkContract::startsTheProgram()
{
    const QString path = world::install(0, u"program"_s, u"Program"_s);
    const QString other = world::install(0, u"other"_s, u"Other"_s);
    QVERIFY(!world::isStarted(path));
    QVERIFY(platform::openLink(path));
    QTRY_VERIFY(world::isStarted(path));
    QVERIFY(!world::isStarted(other));
}

void tst_LinkContract::startsAHiddenProgram()
{
    const QString path = world::install(0, u"program"_s, u"Program"_s);
    world::hide(path);
    QVERIFY(platform::openLink(path));
    QTRY_VERIFY(world::isStarted(path));
}

void tst_LinkContract::startsNothingFromADamagedFile()
{
    const QString path = world::install(0, u"program"_s, u"Program"_s);
    world::damage(path);
    QVERIFY(!platform::openLink(path));
    QVERIFY(!world::isStarted(path));
}

VASKEL_TEST(tst_LinkContract, QCoreApplication)
#include "tst_LinkContract.moc"
