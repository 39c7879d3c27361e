// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;
namespace fileindex = platform::fileindex;

namespace {

bool search(const QString &text, unsigned maximum = 50)
{
    fileindex::setSearchText(text);
    fileindex::setMaximum(maximum);
    fileindex::setRequestFlags(fileindex::requestFullPath);
    return fileindex::query();
}

QStringList results()
{
    QStringList paths;
    for (unsigned index = 0; index < fileindex::resultCount(); ++index) {
        paths.append(fileindex::resultPath(index));
    }
    return paths;
}

} // namespace

class tst_FileIndexContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hasANameWhereOneIsInstalled();
    void findsAFileByAPartOfItsName_data();
    void findsAFileByAPartOfItsName();
    void findsNothing();
    void findsNoMoreThanTheMaximum();
    void forgetsTheResultsOfTheQueryBefore();
    void givesNoPathThatWasNotRequested();
    void givesNoPathBeyondTheResults();
    void forgetsEverythingAtAReset();
    void tellsWhyItFailed();
};

void tst_FileIndexContract::init()
{
    world::reset();
    fileindex::reset();
}

void tst_FileIndexContract::hasANameWhereOneIsInstalled()
{
    world::installIndex({});
    QVERIFY(!fileindex::name().isEmpty());
    const bool isRemoved = world::removeIndex();
    QCOMPARE(fileindex::name().isEmpty(), isRemoved);
}

void tst_FileIndexContract::findsAFileByAPartOfItsName_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("the name") << u"yearly report.txt"_s;
    QTest::newRow("its beginning") << u"yearly"_s;
    QTest::newRow("its middle") << u"ly rep"_s;
    QTest::newRow("in other letters") << u"REPORT"_s;
    QTest::newRow("blanks around") << u"  report "_s;
}

void tst_FileIndexContract::findsAFileByAPartOfItsName()
{
    QFETCH(const QString, text);
    const QStringList paths = world::installIndex({u"other"_s, u"yearly report.txt"_s});
    QVERIFY(search(text));
    QCOMPARE(fileindex::lastError(), 0U);
    QCOMPARE(results(), paths.mid(1));
}

void tst_FileIndexContract::findsNothing()
{
    world::installIndex({u"other"_s});
    QVERIFY(search(u"report"_s));
    QCOMPARE(fileindex::lastError(), 0U);
    QCOMPARE(fileindex::resultCount(), 0U);
}

void tst_FileIndexContract::findsNoMoreThanTheMaximum()
{
    world::installIndex({u"report 1"_s, u"report 2"_s, u"report 3"_s});
    QVERIFY(search(u"report"_s, 2));
    QCOMPARE(fileindex::resultCount(), 2U);
    QVERIFY(search(u"report"_s, 50));
    QCOMPARE(fileindex::resultCount(), 3U);
}

void tst_FileIndexContract::forgetsTheResultsOfTheQueryBefore()
{
    const QStringList paths = world::installIndex({u"one"_s, u"two"_s});
    QVERIFY(search(u"one"_s));
    QVERIFY(search(u"two"_s));
    QCOMPARE(results(), paths.mid(1));
}

void tst_FileIndexContract::givesNoPathThatWasNotRequested()
{
    world::installIndex({u"report"_s});
    fileindex::setSearchText(u"report"_s);
    fileindex::setMaximum(50);
    fileindex::setRequestFlags(0);
    QVERIFY(fileindex::query());
    QCOMPARE(results(), QStringList(QString()));
}

void tst_FileIndexContract::givesNoPathBeyondTheResults()
{
    world::installIndex({u"report"_s});
    QVERIFY(search(u"report"_s));
    QVERIFY(fileindex::resultPath(1).isEmpty());
    QVERIFY(fileindex::resultPath(4294967295U).isEmpty());
}

void tst_FileIndexContract::forgetsEverythingAtAReset()
{
    world::installIndex({u"report"_s});
    QVERIFY(search(u"report"_s));
    fileindex::reset();
    QCOMPARE(fileindex::resultCount(), 0U);
    QVERIFY(fileindex::resultPath(0).isEmpty());
}

void tst_FileIndexContract::tellsWhyItFailed()
{
    world::installIndex({u"report"_s});
    QVERIFY(search(u"report"_s));
    world::breakIndex();
    QVERIFY(!search(u"report"_s));
    QVERIFY(fileindex::lastError() != 0);
    QCOMPARE(fileindex::resultCount(), 0U);
}

VASKEL_TEST(tst_FileIndexContract, QCoreApplication)
#include "tst_FileIndexContract.moc"
