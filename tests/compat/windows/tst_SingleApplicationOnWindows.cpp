// SPDX-License-Identifier: GPL-3.0-or-later
#include <SingleApplication>

#include "compat/SingleApplication/InstanceLock.h"
#include "support/TestHome.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60000; // for a busy machine
constexpr int timeout = 1000;
const QString userData = u"VaskelTest"_s;

int nextNumber = 0;

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
        m_process.waitForFinished(patience);
    }

    void quit()
    {
        QFile mark(m_file + ".quit"_L1);
        QVERIFY(mark.open(QIODevice::WriteOnly));
        mark.close();
        QVERIFY(m_process.waitForFinished(patience));
        QCOMPARE(m_process.exitCode(), 0);
    }

    QStringList said() const
    {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromLatin1(file.readAll()).split(u'\n', Qt::SkipEmptyParts)
                   : QStringList();
    }

    bool isPrimary() const { return said().contains(u"primary"_s); }
    bool isSecondary() const { return said().contains(u"secondary"_s); }
    qsizetype timesTold() const { return said().count(u"told"_s); }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Whether the process ended normally without becoming an instance.
    bool hasGivenWay() const
    {
        return !isRunning() && m_process.exitStatus() == QProcess::NormalExit
               && m_process.exitCode() == 0 && said() == QStringList{u"starting"_s};
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
    void secondStartTellsTheFirstAndEnds();
    void everyStartIsTold();
    void nextStartIsPrimaryAfterTheFirstHasQuit();
    void killedInstanceBlocksNoStart();
    void twoStartsAtTheSameMomentLeaveOne();
    void tenStartsAtOnceLeaveOne();
    void otherUserDataIsAnotherProgram();
    void secondaryInstanceIsNotToldOf();
    void lockIsHeldByOneObjectAtATime();
    void waitingStartTakesOverALockThatIsGivenBack();
    void holderThatNeverListensIsGivenTheTimeout();
};

void tst_SingleApplicationOnWindows::secondStartTellsTheFirstAndEnds()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), patience);
    const Instance second;
    QTRY_VERIFY_WITH_TIMEOUT(!second.isRunning(), patience);
    QVERIFY(second.hasGivenWay());
    QTRY_COMPARE_WITH_TIMEOUT(first.timesTold(), 1, patience);
    QVERIFY(first.isRunning());
}

void tst_SingleApplicationOnWindows::everyStartIsTold()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), patience);
    for (int told = 1; told <= 3; ++told) {
        const Instance next;
        QTRY_VERIFY_WITH_TIMEOUT(next.hasGivenWay(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(first.timesTold(), told, patience);
    }
}

void tst_SingleApplicationOnWindows::nextStartIsPrimaryAfterTheFirstHasQuit()
{
    for (int round = 0; round < 3; ++round) {
        Instance instance;
        QTRY_VERIFY_WITH_TIMEOUT(instance.isPrimary(), patience);
        instance.quit();
    }
}

void tst_SingleApplicationOnWindows::killedInstanceBlocksNoStart()
{
    Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), patience);
    first.kill();
    const Instance second;
    QTRY_VERIFY_WITH_TIMEOUT(second.isPrimary(), patience);
    const Instance third;
    QTRY_VERIFY_WITH_TIMEOUT(third.hasGivenWay(), patience);
    QTRY_COMPARE_WITH_TIMEOUT(second.timesTold(), 1, patience);
}

void tst_SingleApplicationOnWindows::twoStartsAtTheSameMomentLeaveOne()
{
    for (int round = 0; round < 5; ++round) {
        const Instance one(userData, {}, patience);
        const Instance two(userData, {}, patience);
        QTRY_VERIFY_WITH_TIMEOUT(one.hasGivenWay() != two.hasGivenWay(), patience);
        const Instance &primary = one.hasGivenWay() ? two : one;
        QTRY_VERIFY_WITH_TIMEOUT(primary.isPrimary(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(primary.timesTold(), 1, patience);
    }
}

void tst_SingleApplicationOnWindows::tenStartsAtOnceLeaveOne()
{
    constexpr int count = 10;
    std::vector<std::unique_ptr<Instance>> instances;
    instances.reserve(count);
    for (int i = 0; i < count; ++i) {
        instances.push_back(std::make_unique<Instance>(userData, QStringList(), patience));
    }
    const auto countOf = [&instances](auto predicate) {
        return std::count_if(instances.begin(), instances.end(), predicate);
    };
    QTRY_COMPARE_WITH_TIMEOUT(countOf([](const auto &one) { return one->hasGivenWay(); }),
                              count - 1, patience);
    QCOMPARE(countOf([](const auto &one) { return one->isPrimary(); }), 1);
    const auto primary = std::find_if(instances.begin(), instances.end(),
                                      [](const auto &one) { return one->isPrimary(); });
    QTRY_COMPARE_WITH_TIMEOUT((*primary)->timesTold(), count - 1, patience);
}

void tst_SingleApplicationOnWindows::otherUserDataIsAnotherProgram()
{
    const Instance first;
    const Instance other(u"Other"_s);
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), patience);
    QTRY_VERIFY_WITH_TIMEOUT(other.isPrimary(), patience);
}

void tst_SingleApplicationOnWindows::secondaryInstanceIsNotToldOf()
{
    const Instance first;
    QTRY_VERIFY_WITH_TIMEOUT(first.isPrimary(), patience);
    const Instance second(userData, {u"secondary"_s});
    QTRY_VERIFY_WITH_TIMEOUT(second.isSecondary(), patience);
    QVERIFY(second.isRunning());
    QCOMPARE(first.timesTold(), 0);
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

void tst_SingleApplicationOnWindows::waitingStartTakesOverALockThatIsGivenBack()
{
    auto lock = std::make_unique<InstanceLock>(userData);
    QVERIFY(lock->tryLock() == InstanceLock::State::Held);
    const Instance waiting(userData, {}, patience);
    QTRY_VERIFY_WITH_TIMEOUT(waiting.said().contains(u"starting"_s), patience);
    QVERIFY(!waiting.isPrimary());
    lock.reset();
    QTRY_VERIFY_WITH_TIMEOUT(waiting.isPrimary(), patience);
}

void tst_SingleApplicationOnWindows::holderThatNeverListensIsGivenTheTimeout()
{
    InstanceLock lock(userData);
    QVERIFY(lock.tryLock() == InstanceLock::State::Held);
    const Instance next;
    QTRY_VERIFY_WITH_TIMEOUT(next.hasGivenWay(), patience);
}

QTEST_GUILESS_MAIN(tst_SingleApplicationOnWindows)
#include "tst_SingleApplicationOnWindows.moc"
