// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/Updater.h"

#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/HttpServer.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <csignal>
#include <utility>

#include <malloc.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 megabyte = 1024 * 1024;

/// In bytes: "VmRSS" for the current size, "VmHWM" for the peak since forgetPeak().
qint64 memory(const QByteArray &field)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QByteArrayList lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(field)) {
            return line.simplified().split(' ').value(1).toLongLong() * 1024;
        }
    }
    return -1;
}

bool forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    return file.open(QIODevice::WriteOnly) && file.write("5") == 1;
}

} // namespace

class tst_UpdaterResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void streamsALargeFile_data();
    void streamsALargeFile();
    void failsOnAFullDisk();
};

void tst_UpdaterResources::initTestCase()
{
#ifdef M_MMAP_THRESHOLD
    // Otherwise glibc keeps for a while what the threads have freed, up to 25 MB on a busy machine.
    QCOMPARE(::mallopt(M_MMAP_THRESHOLD, 16 * 1024), 1);
#endif
}

void tst_UpdaterResources::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
}

void tst_UpdaterResources::streamsALargeFile_data()
{
    QTest::addColumn<int>("pauseBetweenPieces");
    QTest::newRow("as fast as it comes") << 0;
    QTest::newRow("onto a disk that is slower than the network") << 1;
}

void tst_UpdaterResources::streamsALargeFile()
{
    QFETCH(int, pauseBetweenPieces);
    constexpr qint64 size = 100'000'000;
    const qint64 sent = pauseBetweenPieces == 0 ? size : size / 2;
    HttpServer smallServer;
    smallServer.answerBody(u"/small"_s, "small");
    // The server sends from its own thread, as fast as the client reads.
    HttpServer server;
    server.answerZeros(u"/large"_s, sent);
    QThread thread;
    server.moveToThread(&thread);

    Updater updater;
    const QSignalSpy finished(&updater, &Updater::downloadFinished);
    qint64 reports = 0;
    connect(&updater, &Updater::downloadProgress, this, [&] {
        ++reports;
        QThread::msleep(ulong(pauseBetweenPieces) * 50);
    });
    // The first download allocates what only the first use needs.
    updater.downloadAndInstall(smallServer.url(u"/small"_s));
    QTRY_COMPARE(finished.size(), 1);

    const qint64 before = memory("VmRSS");
    QVERIFY(before > 0);
    QVERIFY(forgetPeak());
    updater.downloadAndInstall(server.url(u"/large"_s));
    // Not earlier: the buffer of a request can be limited only after Qt has started it, and a fast
    // answer could come in between.
    thread.start();
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 2, 120000);
    const qint64 growth = memory("VmHWM") - before;
    thread.quit();
    thread.wait();

    qInfo("The memory grew by %.1f MB.", double(growth) / megabyte);
    QVERIFY2(growth < 8 * megabyte, QByteArray::number(growth).constData());
    QCOMPARE(QFileInfo(testhome::path() + "/tmp/Vaskel_update.exe"_L1).size(), sent);
    QVERIFY(reports > 2);
}

void tst_UpdaterResources::failsOnAFullDisk()
{
    HttpServer server;
    server.answerZeros(u"/new"_s, 100000);
    Updater updater;
    const QSignalSpy finished(&updater, &Updater::downloadFinished);
    const QSignalSpy errors(&updater, &Updater::downloadError);

    rlimit limit = {};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlim_t usual = std::exchange(limit.rlim_cur, 1000);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    updater.downloadAndInstall(server.url(u"/new"_s));
    [[maybe_unused]] const bool isDone =
        QTest::qWaitFor([&] { return !finished.isEmpty() || !errors.isEmpty(); });
    limit.rlim_cur = usual;
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, handler);

    QCOMPARE(finished.size(), 0);
    QCOMPARE(errors.size(), 1);
    QVERIFY(!QFileInfo::exists(testhome::path() + "/tmp/Vaskel_update.exe"_L1));
    QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
}

VASKEL_TEST(tst_UpdaterResources, QCoreApplication)
#include "tst_UpdaterResources.moc"
