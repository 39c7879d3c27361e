// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RegularFile.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_RegularFileContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void opensAFileForReading();
    void opensAResource();
    void refusesWhatHasNoEnd();
    void refusesWhatCannotBeRead_data();
    void refusesWhatCannotBeRead();
};

void tst_RegularFileContract::opensAFileForReading()
{
    QFile file(testhome::writeFile(u"tmp/a file"_s, "content"));
    QVERIFY(platform::openRegularFile(file));
    QCOMPARE(file.openMode() & QIODevice::ReadWrite, QIODevice::ReadOnly);
    QCOMPARE(file.size(), 7);
    QCOMPARE(file.readAll(), "content");
}

void tst_RegularFileContract::opensAResource()
{
    QFile file(u":/assets/style.qss"_s);
    QVERIFY(platform::openRegularFile(file));
    QVERIFY(!file.readAll().isEmpty());
}

void tst_RegularFileContract::refusesWhatHasNoEnd()
{
    QFile file(world::endlessFile());
    QVERIFY(!platform::openRegularFile(file));
    QVERIFY(!file.isOpen());
}

void tst_RegularFileContract::refusesWhatCannotBeRead_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << testhome::path() + "/tmp/missing"_L1;
    QTest::newRow("missing resource") << u":/missing"_s;
    QTest::newRow("folder") << testhome::path();
    QTest::newRow("no path") << QString();
}

void tst_RegularFileContract::refusesWhatCannotBeRead()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(!platform::openRegularFile(file));
    QVERIFY(!file.isOpen());
}

VASKEL_TEST(tst_RegularFileContract, QCoreApplication)
#include "tst_RegularFileContract.moc"
