// SPDX-License-Identifier: GPL-3.0-or-later
#include <SingleApplication>

#include "compat/SingleApplication/InstanceLock.h"
#include "compat/SingleApplication/InstanceMessage.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>
#include <vector>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString userData = u"Vaskel"_s;
constexpr int timeout = 1000;

/// A process of the helper program and what it prints.
class Instance
{
public:
    explicit Instance(const QString &extra = {}, const QString &data = userData, int wait = timeout)
        : Instance(extra, data, wait, QProcessEnvironment::systemEnvironment())
    {
    }

    Instance(const QString &extra, const QString &data, int wait,
             const QProcessEnvironment &environment)
    {
        QStringList arguments{data, QString::number(wait)};
        if (!extra.isEmpty()) {
            arguments.append(extra);
        }
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(SINGLE_INSTANCE), arguments);
    }

    ~Instance()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    void quit()
    {
        m_process.closeWriteChannel();
        QVERIFY2(m_process.waitForFinished(), qPrintable(output().join(u' ')));
    }

    void signal(int number) { ::kill(pid_t(m_process.processId()), number); }

    QProcess &process() { return m_process; }

    QStringList output()
    {
        m_output += m_process.readAllStandardOutput();
        return QString::fromLocal8Bit(m_output).split(u'\n', Qt::SkipEmptyParts);
    }

    qsizetype notificationCount() { return output().count(u"told"_s); }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Whether the process ended normally without becoming an instance.
    bool hasExited()
    {
        return !isRunning() && m_process.exitStatus() == QProcess::NormalExit
               && m_process.exitCode() == 0 && output() == QStringList{u"starting"_s};
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

bool isPrimary(Instance &instance)
{
    return instance.output().contains(u"primary"_s);
}

QString pathOf(const QString &suffix, const QString &folderName = u"runtime"_s)
{
    const QDir folder(testhome::path() + u'/' + folderName);
    const QStringList names =
        folder.entryList({u"SingleApplication-*"_s + suffix}, QDir::Files | QDir::System);
    return names.size() == 1 ? folder.filePath(names.first()) : QString();
}

bool send(const QByteArray &message)
{
    return sendInstanceMessage(InstanceLock(userData).serverName(), message,
                               QDeadlineTimer(timeout));
}

// Opens the session's runtime folder to other users, and puts a file in place of Qt's fallback.
void blockRuntimeFolders()
{
    QVERIFY(QFile::setPermissions(testhome::path() + "/runtime"_L1, QFile::Permissions(0x7777)));
    const QString user = QString::fromLocal8Bit(getpwuid(geteuid())->pw_name);
    testhome::writeFile("tmp/runtime-"_L1 + user, {});
}

} // namespace

class tst_SingleApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void firstInstanceIsPrimary();
    void secondStartNotifiesTheFirstAndEndsWithinASecond();
    void everyStartIsReported();
    void nextStartIsPrimaryAfterTheFirstHasQuit();
    void killedInstanceBlocksNoStart();
    void filesOfAnotherMachineBlockNoStart();
    void startedProgramKeepsNothingOfTheLock();
    void twentyStartsAtOnceLeaveOne();
    void stoppedInstanceIsNotifiedWhenItContinues();
    void startingInstanceIsNotified();
    void instanceThatNeverListensIsGivenTheTimeout();
    void waitingStartTakesOverFromAnInstanceThatEnds();
    void otherUserDataIsAnotherProgram();
    void secondaryInstanceIsNotReported();
    void messageArrivesWithoutAStart();
    void messageWithoutAnInstanceFails();
    void messageToAStoppedInstanceArrivesWhenItContinues();
    void primaryInstanceSendsNothing();
    void longMessageIsIgnored();
    void messageInPiecesArrivesWhole();
    void connectionThatStaysOpenBlocksNobody();
    void otherUsersHaveNoAccess();
    void folderThatOthersMayWriteToIsNotUsed();
    void startsWithoutAnyFolder();
};

void tst_SingleApplication::init()
{
    testhome::reset();
}

void tst_SingleApplication::firstInstanceIsPrimary()
{
    Instance first;
    QTRY_COMPARE(first.output(), (QStringList{u"starting"_s, u"primary"_s}));
    first.quit();
    QCOMPARE(first.process().exitCode(), 0);
    QCOMPARE(first.notificationCount(), 0);
}

void tst_SingleApplication::secondStartNotifiesTheFirstAndEndsWithinASecond()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));

    QElapsedTimer timer;
    timer.start();
    Instance second;
    QVERIFY(second.process().waitForFinished());
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(second.hasExited());
    QTRY_COMPARE(first.notificationCount(), 1);
    QVERIFY(first.isRunning());
}

void tst_SingleApplication::everyStartIsReported()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    for (int told = 1; told <= 5; ++told) {
        Instance next;
        QTRY_VERIFY(next.hasExited());
        QTRY_COMPARE(first.notificationCount(), told);
    }
}

void tst_SingleApplication::nextStartIsPrimaryAfterTheFirstHasQuit()
{
    for (int round = 0; round < 3; ++round) {
        Instance instance;
        QTRY_VERIFY(isPrimary(instance));
        instance.quit();
        QVERIFY(!instance.isRunning());
    }
}

void tst_SingleApplication::killedInstanceBlocksNoStart()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    first.signal(SIGKILL);
    QVERIFY(first.process().waitForFinished());
    QVERIFY(!pathOf(u".lock"_s).isEmpty());
    QVERIFY(!pathOf(u".socket"_s).isEmpty());

    Instance second;
    QTRY_VERIFY(isPrimary(second));
    Instance third;
    QTRY_VERIFY(third.hasExited());
    QTRY_COMPARE(second.notificationCount(), 1);
}

// A lock that relies on the stored process ID would block starts once the ID is reused, and one
// that relies on the host name after the host is renamed.
void tst_SingleApplication::filesOfAnotherMachineBlockNoStart()
{
    const InstanceLock lock(userData);
    QString lockPath = lock.serverName();
    lockPath.replace(u".socket"_s, u".lock"_s);
    QFile file(lockPath);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::number(getpid()) + "\ntst_SingleApplication\nelsewhere\n");
    file.close();
    QFile socket(lock.serverName());
    QVERIFY(socket.open(QIODevice::WriteOnly));
    socket.close();

    Instance first;
    QTRY_VERIFY(isPrimary(first));
    Instance second;
    QTRY_VERIFY(second.hasExited());
    QTRY_COMPARE(first.notificationCount(), 1);
}

void tst_SingleApplication::startedProgramKeepsNothingOfTheLock()
{
    Instance first(u"child"_s);
    QTRY_COMPARE(first.output().size(), 3);
    const pid_t child = first.output().last().toInt();
    const auto cleanUp = qScopeGuard([child] { ::kill(child, SIGKILL); });
    first.signal(SIGKILL);
    QVERIFY(first.process().waitForFinished());

    Instance second;
    QTRY_VERIFY(isPrimary(second));
    QCOMPARE(::kill(child, 0), 0);
}

void tst_SingleApplication::twentyStartsAtOnceLeaveOne()
{
    constexpr int starts = 20;
    std::vector<std::unique_ptr<Instance>> instances(starts);
    std::ranges::generate(instances, [] { return std::make_unique<Instance>(); });

    const auto running = [&] {
        return std::ranges::count_if(instances, [](auto &one) { return one->isRunning(); });
    };
    QTRY_COMPARE_WITH_TIMEOUT(running(), 1, 30000);
    const auto primary =
        std::ranges::find_if(instances, [](auto &one) { return one->isRunning(); });
    QTRY_VERIFY(isPrimary(**primary));
    QTRY_COMPARE((*primary)->notificationCount(), starts - 1);
    for (auto &instance : instances) {
        QVERIFY(instance == *primary || instance->hasExited());
    }
}

void tst_SingleApplication::stoppedInstanceIsNotifiedWhenItContinues()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    first.signal(SIGSTOP);

    QElapsedTimer timer;
    timer.start();
    Instance second;
    QVERIFY(second.process().waitForFinished());
    QVERIFY(second.hasExited());
    QVERIFY2(timer.elapsed() < timeout, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(first.notificationCount(), 0);

    first.signal(SIGCONT);
    QTRY_COMPARE(first.notificationCount(), 1);
}

void tst_SingleApplication::startingInstanceIsNotified()
{
    InstanceLock lock(userData);
    QCOMPARE(lock.tryLock(), InstanceLock::State::Held);

    Instance second(QString(), userData, 60000);
    QTRY_VERIFY(!second.output().isEmpty());
    QVERIFY(!second.process().waitForFinished(500));

    QLocalServer server;
    QVERIFY(server.listen(lock.serverName()));
    QTRY_VERIFY(second.hasExited());
    QTRY_VERIFY(server.hasPendingConnections());
}

void tst_SingleApplication::instanceThatNeverListensIsGivenTheTimeout()
{
    InstanceLock lock(userData);
    QCOMPARE(lock.tryLock(), InstanceLock::State::Held);

    QElapsedTimer timer;
    timer.start();
    Instance second(QString(), userData, 700);
    QVERIFY(second.process().waitForFinished());
    QVERIFY(second.hasExited());
    QVERIFY2(timer.elapsed() >= 700, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
}

void tst_SingleApplication::waitingStartTakesOverFromAnInstanceThatEnds()
{
    auto lock = std::make_unique<InstanceLock>(userData);
    QCOMPARE(lock->tryLock(), InstanceLock::State::Held);

    Instance second(QString(), userData, 60000);
    QTRY_VERIFY(!second.output().isEmpty());
    QVERIFY(!second.process().waitForFinished(500));

    lock.reset();
    QTRY_VERIFY(isPrimary(second));
}

void tst_SingleApplication::otherUserDataIsAnotherProgram()
{
    Instance one;
    QTRY_VERIFY(isPrimary(one));
    Instance other(QString(), u"another"_s);
    QTRY_VERIFY(isPrimary(other));
    Instance nameless(QString(), u""_s);
    QTRY_VERIFY(isPrimary(nameless));
    QCOMPARE(one.notificationCount(), 0);
}

void tst_SingleApplication::secondaryInstanceIsNotReported()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    Instance second(u"secondary"_s);
    QTRY_COMPARE(second.output(), (QStringList{u"starting"_s, u"secondary"_s}));
    second.quit();
    QCOMPARE(second.process().exitCode(), 0);
    QCOMPARE(first.notificationCount(), 0);

    first.quit();
    Instance third(u"secondary"_s);
    QTRY_VERIFY(isPrimary(third));
}

void tst_SingleApplication::messageArrivesWithoutAStart()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    Instance second(u"send"_s);
    QTRY_COMPARE(second.output(), (QStringList{u"starting"_s, u"secondary"_s, u"sent"_s}));
    QTRY_VERIFY(first.output().contains(u"got hello"_s));
    QVERIFY(send("without an application"));
    QTRY_VERIFY(first.output().contains(u"got without an application"_s));
    QCOMPARE(first.notificationCount(), 0);
}

void tst_SingleApplication::messageWithoutAnInstanceFails()
{
    QVERIFY(!send("hello"));
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    first.signal(SIGKILL);
    QVERIFY(first.process().waitForFinished());
    QVERIFY(!pathOf(u".socket"_s).isEmpty());
    QVERIFY(!send("hello"));
}

void tst_SingleApplication::messageToAStoppedInstanceArrivesWhenItContinues()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    first.signal(SIGSTOP);
    QVERIFY(send("hello"));
    first.signal(SIGCONT);
    QTRY_VERIFY(first.output().contains(u"got hello"_s));
}

void tst_SingleApplication::primaryInstanceSendsNothing()
{
    Instance first(u"send"_s);
    QTRY_COMPARE(first.output(), (QStringList{u"starting"_s, u"primary"_s, u"not sent"_s}));
}

void tst_SingleApplication::longMessageIsIgnored()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    const QByteArray longest(4096, 'x');
    QVERIFY(send(longest + 'x'));
    QVERIFY(send(QByteArray(100'000, 'y')));
    QVERIFY(send(longest));
    QTRY_COMPARE(first.output().size(), 3);
    QCOMPARE(first.output().last(), QString("got "_L1 + QString::fromLatin1(longest)));
    QCOMPARE(first.notificationCount(), 0);
}

void tst_SingleApplication::messageInPiecesArrivesWhole()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    QLocalSocket socket;
    socket.connectToServer(InstanceLock(userData).serverName());
    QVERIFY(socket.waitForConnected());
    socket.write("hel");
    QVERIFY(socket.waitForBytesWritten());
    QVERIFY(send("between"));
    QTRY_VERIFY(first.output().contains(u"got between"_s));
    socket.write("lo");
    socket.disconnectFromServer();
    QTRY_VERIFY(first.output().contains(u"got hello"_s));
}

void tst_SingleApplication::connectionThatStaysOpenBlocksNobody()
{
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    QLocalSocket socket;
    socket.connectToServer(InstanceLock(userData).serverName());
    QVERIFY(socket.waitForConnected());
    QVERIFY(send("hello"));
    QTRY_VERIFY(first.output().contains(u"got hello"_s));
    QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QLocalSocket::UnconnectedState, 60000);
}

void tst_SingleApplication::otherUsersHaveNoAccess()
{
    constexpr auto ofOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
                              | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    Instance first;
    QTRY_VERIFY(isPrimary(first));
    const QStringList paths{testhome::path() + "/runtime"_L1, pathOf(u".lock"_s),
                            pathOf(u".socket"_s)};
    for (const QString &path : paths) {
        const QFileInfo info(path);
        QVERIFY2(info.exists(), qPrintable(path));
        QCOMPARE(info.ownerId(), getuid());
        QVERIFY2(!(info.permissions() & ofOthers), qPrintable(path));
    }
}

void tst_SingleApplication::folderThatOthersMayWriteToIsNotUsed()
{
    blockRuntimeFolders();
    Instance instance;
    QTRY_VERIFY(isPrimary(instance));
    QVERIFY(pathOf(u".lock"_s).isEmpty());
    QVERIFY(!pathOf(u".lock"_s, u"cache"_s).isEmpty());
    QVERIFY(!pathOf(u".socket"_s, u"cache"_s).isEmpty());
}

void tst_SingleApplication::startsWithoutAnyFolder()
{
    blockRuntimeFolders();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CACHE_HOME"_s, u"/proc/nowhere"_s);
    Instance instance(QString(), userData, timeout, environment);
    QTRY_VERIFY(isPrimary(instance));
}

VASKEL_TEST(tst_SingleApplication, QCoreApplication)
#include "tst_SingleApplication.moc"
