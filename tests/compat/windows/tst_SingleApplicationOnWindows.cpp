// SPDX-License-Identifier: GPL-3.0-or-later
#include <SingleApplication>

#include "compat/SingleApplication/InstanceLock.h"
#include "compat/SingleApplication/InstanceMessage.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

#include <windows.h>

#include <sddl.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int testTimeout = 60000; // for a busy machine
constexpr int timeout = 1000;
const QString userData = u"VaskelTest"_s;

int nextNumber = 0;

bool send(const QByteArray &message)
{
    return sendInstanceMessage(InstanceLock(userData).serverName(), message,
                               QDeadlineTimer(testTimeout));
}

/// A process of the helper program and the file with its state.
class Instance
{
public:
    explicit Instance(const QString &data = userData, const QStringList &extra = {},
                      int wait = timeout)
        : m_file(testhome::path() + u"/instance%1"_s.arg(++nextNumber))
    {
        m_process.start(QStringLiteral(INSTANCE),
                        QStringList{data, QString::number(wait), m_file} + extra);
    }

    ~Instance() { kill(); }
    Q_DISABLE_COPY_MOVE(Instance)

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(testTimeout);
    }

    void quit()
    {
        QFile mark(m_file + ".quit"_L1);
        QVERIFY(mark.open(QIODevice::WriteOnly));
        mark.close();
        QVERIFY(m_process.waitForFinished(testTimeout));
        QCOMPARE(m_process.exitCode(), 0);
    }

    QStringList output() const
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromLatin1(file.readAll()).split(u'\n', Qt::SkipEmptyParts)
                   : QStringList();
    }

    bool isPrimary() const { return output().contains(u"primary"_s); }
    bool isSecondary() const { return output().contains(u"secondary"_s); }
    qsizetype notificationCount() const { return output().count(u"told"_s); }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Whether the process ended normally without becoming an instance.
    bool hasExited() const
    {
        return !isRunning() && m_process.exitStatus() == QProcess::NormalExit
               && m_process.exitCode() == 0 && output() == QStringList{u"starting"_s};
    }

private:
    QString m_file;
    QProcess m_process;
};

} // namespace

class tst_SingleApplicationOnWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void secondStartNotifiesTheFirstAndEnds();
    void everyStartIsReported();
    void nextStartIsPrimaryAfterTheFirstHasQuit();
    void killedInstanceBlocksNoStart();
    void twoStartsAtTheSameMomentLeaveOne();
    void tenStartsAtOnceLeaveOne();
    void otherUserDataIsAnotherProgram();
    void secondaryInstanceIsNotReported();
    void messageArrivesWithoutAStart();
    void messageWithoutAnInstanceFails();
    void longMessageIsIgnored();
    void lockIsHeldByOneObjectAtATime();
    void waitingStartTakesAReleasedLock();
    void holderThatNeverListensIsGivenTheTimeout();
    void takenPipeNameBlocksNoStart();
    void startsWithoutAPlaceForTheLock();
    void lockIsAFileOfTheUser();
    void tellsWhetherTheHolderWasNotified();
    void tellsOfAPipeThatRefuses();
};

void tst_SingleApplicationOnWindows::secondStartNotifiesTheFirstAndEnds()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    const Instance second;
    QTRY_VERIFY_WITH_TIMEOUT(!second.isRunning(), testTimeout);
    QVERIFY(second.hasExited());
    QTRY_COMPARE_WITH_TIMEOUT(first.notificationCount(), 1, testTimeout);
    QVERIFY(first.isRunning());
}

void tst_SingleApplicationOnWindows::everyStartIsReported()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    for (int told = 1; told <= 3; ++told) {
        const Instance next;
        QTRY_VERIFY_WITH_TIMEOUT(next.hasExited(), testTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(first.notificationCount(), told, testTimeout);
    }
}

void tst_SingleApplicationOnWindows::nextStartIsPrimaryAfterTheFirstHasQuit()
{
    for (int round = 0; round < 3; ++round) {
        Instance instance;
        QTRY_VERIFY_WITH_TIMEOUT(instance.isPrimary(), testTimeout);
        instance.quit();
    }
}

void tst_SingleApplicationOnWindows::killedInstanceBlocksNoStart()
{
    Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    first.kill();
    const Instance second;
    QTRY_VERIFY_WITH_TIMEOUT(second.isPrimary(), testTimeout);
    const Instance third;
    QTRY_VERIFY_WITH_TIMEOUT(third.hasExited(), testTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(second.notificationCount(), 1, testTimeout);
}

void tst_SingleApplicationOnWindows::twoStartsAtTheSameMomentLeaveOne()
{
    for (int round = 0; round < 5; ++round) {
        const Instance one(userData, {}, testTimeout);
        const Instance two(userData, {}, testTimeout);
        QTRY_VERIFY_WITH_TIMEOUT(one.hasExited() != two.hasExited(), testTimeout);
        const Instance &primary = one.hasExited() ? two : one;
        QTRY_VERIFY_WITH_TIMEOUT(primary.isPrimary(), testTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(primary.notificationCount(), 1, testTimeout);
    }
}

void tst_SingleApplicationOnWindows::tenStartsAtOnceLeaveOne()
{
    constexpr int count = 10;
    std::vector<std::unique_ptr<Instance>> instances;
    instances.reserve(count);
    for (int i = 0; i < count; ++i) {
        instances.push_back(std::make_unique<Instance>(userData, QStringList(), testTimeout));
    }
    const auto countOf = [&instances](auto predicate) {
        return std::count_if(instances.begin(), instances.end(), predicate);
    };
    QTRY_COMPARE_WITH_TIMEOUT(countOf([](const auto &one) { return one->hasExited(); }), count - 1,
                              testTimeout);
    QCOMPARE(countOf([](const auto &one) { return one->isPrimary(); }), 1);
    const auto primary = std::find_if(instances.begin(), instances.end(),
                                      [](const auto &one) { return one->isPrimary(); });
    QTRY_COMPARE_WITH_TIMEOUT((*primary)->notificationCount(), count - 1, testTimeout);
}

void tst_SingleApplicationOnWindows::otherUserDataIsAnotherProgram()
{
    const Instance first;
    const Instance other(u"Other"_s);
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    QTRY_VERIFY_WITH_TIMEOUT(other.isPrimary(), testTimeout);
}

void tst_SingleApplicationOnWindows::secondaryInstanceIsNotReported()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    const Instance second(userData, {u"secondary"_s});
    QTRY_VERIFY_WITH_TIMEOUT(second.isSecondary(), testTimeout);
    QVERIFY(second.isRunning());
    QCOMPARE(first.notificationCount(), 0);
}

void tst_SingleApplicationOnWindows::messageArrivesWithoutAStart()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    const Instance second(userData, {u"send"_s}, testTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(second.output().value(2), u"sent"_s, testTimeout);
    QTRY_VERIFY_WITH_TIMEOUT(first.output().contains(u"got hello"_s), testTimeout);
    QVERIFY(send("without an application"));
    QTRY_VERIFY_WITH_TIMEOUT(first.output().contains(u"got without an application"_s), testTimeout);
    QCOMPARE(first.notificationCount(), 0);
}

void tst_SingleApplicationOnWindows::messageWithoutAnInstanceFails()
{
    QVERIFY(!send("hello"));
}

void tst_SingleApplicationOnWindows::longMessageIsIgnored()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    const QByteArray longest(4096, 'x');
    QVERIFY(send(longest + 'x'));
    QVERIFY(send(longest));
    const QString got = "got "_L1 + QString::fromLatin1(longest);
    QTRY_COMPARE_WITH_TIMEOUT(first.output().last(), got, testTimeout);
    QCOMPARE(first.output().filter(u"got "_s), QStringList(got));
    QVERIFY(first.output().contains(
        u"warning: SingleApplication: ignored a message that is too long"_s));
    QCOMPARE(first.notificationCount(), 0);
}

void tst_SingleApplicationOnWindows::lockIsHeldByOneObjectAtATime()
{
    InstanceLock other(u"Other"_s);
    QVERIFY(other.tryLock() == InstanceLock::State::Held);
    InstanceLock second(userData);
    {
        InstanceLock first(userData);
        QVERIFY(first.tryLock() == InstanceLock::State::Held);
        QVERIFY(first.tryLock() == InstanceLock::State::Held);
        QVERIFY(second.tryLock() == InstanceLock::State::HeldElsewhere);
    }
    QVERIFY(second.tryLock() == InstanceLock::State::Held);
}

void tst_SingleApplicationOnWindows::waitingStartTakesAReleasedLock()
{
    auto lock = std::make_unique<InstanceLock>(userData);
    QVERIFY(lock->tryLock() == InstanceLock::State::Held);
    const Instance waiting(userData, {}, testTimeout);
    QTRY_VERIFY_WITH_TIMEOUT(waiting.output().contains(u"starting"_s), testTimeout);
    QVERIFY(!waiting.isPrimary());
    lock.reset();
    QTRY_VERIFY_WITH_TIMEOUT(waiting.isPrimary(), testTimeout);
}

void tst_SingleApplicationOnWindows::holderThatNeverListensIsGivenTheTimeout()
{
    InstanceLock lock(userData);
    QVERIFY(lock.tryLock() == InstanceLock::State::Held);
    const Instance next;
    QTRY_VERIFY_WITH_TIMEOUT(next.hasExited(), testTimeout);
}

// Any user can create a pipe of any name.
void tst_SingleApplicationOnWindows::takenPipeNameBlocksNoStart()
{
    const QString name = InstanceLock(userData).serverName();
    QList<HANDLE> pipes;
    for (const QString &taken : {name, name + "-lock"_L1}) {
        pipes += CreateNamedPipeW(qUtf16Printable(uR"(\\.\pipe\)"_s + taken),
                                  PIPE_ACCESS_INBOUND | FILE_FLAG_FIRST_PIPE_INSTANCE,
                                  PIPE_TYPE_BYTE | PIPE_WAIT, 1, 1, 1, 0, nullptr);
        QVERIFY(pipes.last() != INVALID_HANDLE_VALUE);
    }
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    for (const HANDLE pipe : pipes) {
        CloseHandle(pipe);
    }
}

void tst_SingleApplicationOnWindows::startsWithoutAPlaceForTheLock()
{
    testhome::writeFile("data/"_L1 + userData, "in the way");
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    QVERIFY(first.output().contains(
        u"warning: SingleApplication: cannot lock, so every start is an instance of its own"_s));
}

// The file stays, so it is in the folder of the program's data.
void tst_SingleApplicationOnWindows::lockIsAFileOfTheUser()
{
    InstanceLock lock(userData);
    QVERIFY(lock.tryLock() == InstanceLock::State::Held);
    QCOMPARE(QDir(testhome::path() + "/data"_L1).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{userData});
    QCOMPARE(QDir(testhome::path() + "/data/"_L1 + userData).entryList(QDir::Files),
             QStringList{u"instance.lock"_s});
}

void tst_SingleApplicationOnWindows::tellsWhetherTheHolderWasNotified()
{
    const InstanceLock lock(userData);
    QVERIFY(lock.notifyHolder(QDeadlineTimer(0)) == InstanceLock::Notice::NotListening);
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), testTimeout);
    // The macro evaluates its condition once more than needed, but must not give a second notice.
    InstanceLock::Notice notice = InstanceLock::Notice::NotListening;
    const auto isListening = [&] {
        if (notice == InstanceLock::Notice::NotListening) {
            notice = lock.notifyHolder(QDeadlineTimer(0));
        }
        return notice != InstanceLock::Notice::NotListening;
    };
    QTRY_VERIFY(isListening());
    QVERIFY(notice == InstanceLock::Notice::Given);
    QTRY_COMPARE_WITH_TIMEOUT(first.notificationCount(), 1, testTimeout);
}

// Another user's pipe looks like one that refuses.
void tst_SingleApplicationOnWindows::tellsOfAPipeThatRefuses()
{
    const InstanceLock lock(userData);
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    QVERIFY(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        L"D:P(D;;FA;;;WD)", SDDL_REVISION_1, &descriptor, nullptr));
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), descriptor, FALSE};
    const HANDLE pipe =
        CreateNamedPipeW(qUtf16Printable(uR"(\\.\pipe\)"_s + lock.serverName()),
                         PIPE_ACCESS_INBOUND, PIPE_TYPE_BYTE | PIPE_WAIT, 1, 1, 1, 0, &attributes);
    LocalFree(descriptor);
    QVERIFY(pipe != INVALID_HANDLE_VALUE);
    const InstanceLock::Notice notice = lock.notifyHolder(QDeadlineTimer(0));
    CloseHandle(pipe);
    QVERIFY(notice == InstanceLock::Notice::Stolen);
}

VASKEL_TEST(tst_SingleApplicationOnWindows, QCoreApplication)
#include "tst_SingleApplicationOnWindows.moc"
