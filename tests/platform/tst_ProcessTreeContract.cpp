// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessTree.h"

#include "platform/World.h"
#include "support/RunningProcess.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60'000; // the machine may be busy

// Starts the program of tests/commands/steps.cpp in the home.
void start(QProcess &process, const QStringList &steps)
{
    process.setWorkingDirectory(testhome::path());
    process.start(QStringLiteral(STEPS_PROGRAM), steps, QIODevice::ReadOnly);
}

qint64 processIn(const QString &name)
{
    QFile file(testhome::path() + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toLongLong() : 0;
}

} // namespace

class tst_ProcessTreeContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void cleanup();
    void startsTheProgram();
    void endsTheProgramAtOnce();
    void endsWhatTheProgramHasStarted();
    void endsWhatRemainsOfAProgramThatHasEnded();
    void keepsTheProgramThatItDoesNotEnd();
    void endsNothingBeforeTheStart();
};

// The fake ends the program alone, so the child may still run.
void tst_ProcessTreeContract::cleanup()
{
    testhome::writeFile(u"child.end"_s, {});
    QTRY_VERIFY(!isRunning(processIn(u"child"_s)));
}

void tst_ProcessTreeContract::startsTheProgram()
{
    platform::ProcessTree tree;
    QProcess process;
    tree.prepare(process);
    start(process, {u"print"_s, u"text"_s, u"error"_s, u"warning"_s, u"exit"_s, u"3"_s});
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.readAllStandardOutput().trimmed(), QByteArray("text"));
    QCOMPARE(process.readAllStandardError().trimmed(), QByteArray("warning"));
    QCOMPARE(process.exitCode(), 3);
}

void tst_ProcessTreeContract::endsTheProgramAtOnce()
{
    platform::ProcessTree tree;
    QProcess process;
    tree.prepare(process);
    start(process, {u"wait"_s, u"never"_s});
    QVERIFY(process.waitForStarted(patience));
    const qint64 program = process.processId();
    tree.end(process);
    QTRY_COMPARE(process.state(), QProcess::NotRunning);
    QVERIFY(!world::isStillRunning(program));
}

void tst_ProcessTreeContract::endsWhatTheProgramHasStarted()
{
    platform::ProcessTree tree;
    QProcess process;
    tree.prepare(process);
    start(process, {u"child"_s, u"child"_s, u"wait"_s, u"never"_s});
    QTRY_VERIFY_WITH_TIMEOUT(processIn(u"child"_s) > 0, patience);
    const qint64 child = processIn(u"child"_s);
    QVERIFY(world::isStillRunning(child));
    tree.end(process);
    QTRY_VERIFY(!world::isStillRunning(child));
}

void tst_ProcessTreeContract::endsWhatRemainsOfAProgramThatHasEnded()
{
    platform::ProcessTree tree;
    QProcess process;
    tree.prepare(process);
    start(process, {u"child"_s, u"child"_s});
    QTRY_COMPARE_WITH_TIMEOUT(process.state(), QProcess::NotRunning, patience);
    const qint64 child = processIn(u"child"_s);
    QVERIFY(world::isStillRunning(child));
    tree.end(process);
    QTRY_VERIFY(!world::isStillRunning(child));
}

void tst_ProcessTreeContract::keepsTheProgramThatItDoesNotEnd()
{
    auto tree = std::make_unique<platform::ProcessTree>();
    QProcess process;
    tree->prepare(process);
    start(process, {u"pid"_s, u"started"_s, u"wait"_s, u"go"_s, u"print"_s, u"text"_s});
    QTRY_VERIFY_WITH_TIMEOUT(processIn(u"started"_s) > 0, patience);
    tree.reset();
    testhome::writeFile(u"go"_s, {});
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.readAllStandardOutput().trimmed(), QByteArray("text"));
}

void tst_ProcessTreeContract::endsNothingBeforeTheStart()
{
    platform::ProcessTree tree;
    QProcess process;
    tree.end(process);
    tree.prepare(process);
    tree.end(process);
    QCOMPARE(process.state(), QProcess::NotRunning);
    QVERIFY(world::isStillRunning(QCoreApplication::applicationPid()));
}

VASKEL_TEST(tst_ProcessTreeContract, QCoreApplication)
#include "tst_ProcessTreeContract.moc"
