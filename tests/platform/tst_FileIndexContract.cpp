// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;
namespace fileindex = platform::fileindex;

namespace {

fileindex::Answer search(const QString &text, unsigned limit = 50)
{
    return fileindex::search(text, limit);
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
    void findsNoMoreThanTheLimit();
    void forgetsTheSearchBefore();
    void tellsWhyItFailed();
    void callsBackWhenItIsComplete();
    void doesNotCallBackADeadContext();
    void doesNotCallBackForACompleteIndex();
};

void tst_FileIndexContract::init()
{
    world::reset();
}

void tst_FileIndexContract::hasANameWhereOneIsInstalled()
{
    world::installIndex({});
    QVERIFY(!fileindex::name().isEmpty());
    const bool isRemoved = world::removeIndex();
    QCOMPARE(fileindex::name().isEmpty(), isRemoved);
    QCOMPARE(search(u"report"_s).error.has_value(), isRemoved);
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
    const fileindex::Answer answer = search(text);
    QVERIFY(!answer.error);
    QCOMPARE(answer.paths, paths.mid(1));
}

void tst_FileIndexContract::findsNothing()
{
    world::installIndex({u"other"_s});
    const fileindex::Answer answer = search(u"report"_s);
    QVERIFY(!answer.error);
    QCOMPARE(answer.paths, QStringList());
}

void tst_FileIndexContract::findsNoMoreThanTheLimit()
{
    world::installIndex({u"report 1"_s, u"report 2"_s, u"report 3"_s});
    QCOMPARE(search(u"report"_s, 2).paths.size(), 2);
    QCOMPARE(search(u"report"_s, 50).paths.size(), 3);
}

void tst_FileIndexContract::forgetsTheSearchBefore()
{
    const QStringList paths = world::installIndex({u"one"_s, u"two"_s});
    QVERIFY(!search(u"one"_s).error);
    const fileindex::Answer answer = search(u"two"_s);
    QVERIFY(!answer.error);
    QCOMPARE(answer.paths, paths.mid(1));
}

void tst_FileIndexContract::tellsWhyItFailed()
{
    world::installIndex({u"report"_s});
    QVERIFY(!search(u"report"_s).error);
    world::breakIndex();
    const fileindex::Answer answer = search(u"report"_s);
    QVERIFY(answer.error);
    QVERIFY(*answer.error != 0);
    QCOMPARE(answer.paths, QStringList());
}

void tst_FileIndexContract::callsBackWhenItIsComplete()
{
    const QString path = world::installIncompleteIndex(u"report"_s);
    if (path.isEmpty()) {
        QSKIP("The index of this system is never incomplete.");
    }
    QObject context;
    int calls = 0;
    fileindex::watch(&context, [&calls] { ++calls; });
    QCOMPARE(search(u"report"_s).error, std::optional(104U));
    QCOMPARE(search(u"report"_s).error, std::optional(104U));
    QCoreApplication::processEvents();
    QCOMPARE(calls, 0);

    world::completeIndex();
    QTRY_COMPARE_WITH_TIMEOUT(calls, 1, 240'000);
    QCOMPARE(search(u"report"_s).paths, QStringList(path));
    QCoreApplication::processEvents();
    QCOMPARE(calls, 1);
}

void tst_FileIndexContract::doesNotCallBackADeadContext()
{
    if (world::installIncompleteIndex(u"report"_s).isEmpty()) {
        QSKIP("The index of this system is never incomplete.");
    }
    int calls = 0;
    QObject context;
    fileindex::watch(&context, [&calls] { ++calls; });
    int callsOfTheDead = 0;
    {
        QObject dead;
        fileindex::watch(&dead, [&callsOfTheDead] { ++callsOfTheDead; });
        QVERIFY(search(u"report"_s).error);
    }
    world::completeIndex();
    QTRY_COMPARE_WITH_TIMEOUT(calls, 1, 240'000);
    QCOMPARE(callsOfTheDead, 0);
}

void tst_FileIndexContract::doesNotCallBackForACompleteIndex()
{
    world::installIndex({u"report"_s});
    QObject context;
    int calls = 0;
    fileindex::watch(&context, [&calls] { ++calls; });
    QVERIFY(!search(u"report"_s).error);
    QCoreApplication::processEvents();
    QCOMPARE(calls, 0);
}

VASKEL_TEST(tst_FileIndexContract, QCoreApplication)
#include "tst_FileIndexContract.moc"
