// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/Updater.h"

#include "support/FakePlatform.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/FileSizeLimit.h"
#include "update/HttpServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using filecontent::contentOf;
using namespace std::chrono_literals;

namespace {

QString downloadPath()
{
    return testhome::path() + "/tmp/Vaskel_update.exe"_L1;
}

QString scriptPath()
{
    return testhome::path() + "/tmp/Vaskel_updater.bat"_L1;
}

bool exists(const QString &path)
{
    return QFileInfo(path).exists() || QFileInfo(path).isSymLink();
}

/// Records the signals of a download in order, with the state of the files at that time.
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(Updater &updater)
    {
        connect(&updater, &Updater::downloadProgress, this, [this](qint64 received, qint64 total) {
            progress.append({received, total});
        });
        connect(&updater, &Updater::downloadFinished, this, [this] {
            heard.append(u"finished"_s);
            contentAtEnd = contentOf(downloadPath());
            startedAtEnd = fakePlatform().startedUpdateScripts;
        });
        connect(&updater, &Updater::downloadError, this, [this](const QString &message) {
            heard.append("error: "_L1 + message);
            hasFileAtError = exists(downloadPath());
        });
    }

    QStringList heard;
    QList<std::pair<qint64, qint64>> progress;
    std::optional<QByteArray> contentAtEnd;
    QStringList startedAtEnd;
    bool hasFileAtError = false;
};

} // namespace

/// The download up to the start of the script, with a server that sends the answer of each case.
class tst_UpdaterDownload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void sendsNothingOfTheUser();
    void installsWhatItDownloaded();
    void usesTheFolderWhereNobodyCanExchangeFiles();
    void failsWithoutAFolderWhereNobodyCanExchangeFiles();
    void reportsTheProgress();
    void acceptsAnAnswerWithoutAValidLength_data();
    void acceptsAnAnswerWithoutAValidLength();
    void refusesAnEmptyFile_data();
    void refusesAnEmptyFile();
    void readsNoMoreThanTheLength();
    void replacesTheFileOfAnEarlierAttempt();
    void followsRedirects();
    void removesTheFileAfterAnError_data();
    void removesTheFileAfterAnError();
    void failsWithoutAServer();
    void failsWithoutAUsableAddress_data();
    void failsWithoutAUsableAddress();
    void failsOnAFullDisk_data();
    void failsOnAFullDisk();
    void startsNoScriptThatIsCutShort();
    void endsAfterSilence_data();
    void endsAfterSilence();
    void failsIfTheFileCannotBeCreated();
    void runsOnIfTheScriptCannotBeCreated();
    void canBeRetried();
    void canBeRetriedFromTheErrorSignal();
    void countsOnlyTheLastOfTwoDownloads_data();
    void countsOnlyTheLastOfTwoDownloads();
    void abortsTheFirstDownloadIfTheSecondFileCannotBeCreated();
    void neverEndsBeforeItsAnswer_data();
    void neverEndsBeforeItsAnswer();
    void ignoresItsSlotsWithoutADownload();
    void quitsEvenIfTheScriptDoesNotStart();

private:
    /// Downloads and returns the exit status of the event loop: 0 if the updater quit, 1 if it
    /// reported an error.
    int download(Updater &updater, const QString &url);

    std::unique_ptr<HttpServer> m_server;
};

void tst_UpdaterDownload::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    m_server = std::make_unique<HttpServer>();
}

int tst_UpdaterDownload::download(Updater &updater, const QString &url)
{
    constexpr int givenUp = 2;
    QTimer watchdog;
    watchdog.callOnTimeout(this, [] { QCoreApplication::exit(givenUp); });
    watchdog.start(30000);
    QObject context;
    connect(
        &updater, &Updater::downloadError, &context, [] { QCoreApplication::exit(1); },
        Qt::QueuedConnection);
    QTimer::singleShot(0, &updater, [&] { updater.downloadAndInstall(url); });
    return QCoreApplication::exec();
}

void tst_UpdaterDownload::installsWhatItDownloaded()
{
    const QByteArray program = QByteArrayLiteral("\x7f"
                                                 "ELF\0\r\n\x1a\xff new program");
    m_server->answerBody(u"/new"_s, program);
    fakePlatform().updateScript = u"line é\nlast\n"_s;
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);

    QCOMPARE(listener.heard, QStringList{u"finished"_s});
    QCOMPARE(listener.contentAtEnd, program);
    QCOMPARE(listener.startedAtEnd, QStringList());
    QCOMPARE(contentOf(downloadPath()), program);
    QCOMPARE(contentOf(scriptPath()).value().replace("\r\n", "\n"), "line é\nlast\n");
    const std::pair<QString, QString> call(downloadPath(), QCoreApplication::applicationFilePath());
    QCOMPARE(fakePlatform().updateScriptCalls.size(), 1);
    QCOMPARE(fakePlatform().updateScriptCalls.constFirst(), call);
    QCOMPARE(fakePlatform().startedUpdateScripts, QStringList{scriptPath()});
    QCOMPARE(m_server->requests.size(), 1);
}

void tst_UpdaterDownload::usesTheFolderWhereNobodyCanExchangeFiles()
{
    const QString folder = testhome::path() + "/data/own"_L1;
    QVERIFY(QDir().mkpath(folder));
    fakePlatform().temporaryFolder = folder;
    m_server->answerBody(u"/new"_s, "new program");
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(folder + "/Vaskel_update.exe"_L1), "new program");
    QCOMPARE(fakePlatform().startedUpdateScripts, QStringList{folder + "/Vaskel_updater.bat"_L1});
    QVERIFY(!exists(downloadPath()));
    QVERIFY(!exists(scriptPath()));
}

void tst_UpdaterDownload::failsWithoutAFolderWhereNobodyCanExchangeFiles()
{
    fakePlatform().temporaryFolder = QString();
    m_server->answerBody(u"/new"_s, "new program");
    Updater updater;
    const Listener listener(updater);
    updater.downloadAndInstall(m_server->url(u"/new"_s));
    QCOMPARE(listener.heard, QStringList(u"error: Failed to create download file"_s));
    QVERIFY(m_server->requests.isEmpty());
    QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
}

void tst_UpdaterDownload::reportsTheProgress()
{
    constexpr qint64 size = 3000000;
    m_server->answerZeros(u"/new"_s, size);
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);

    qint64 last = 0;
    for (const auto &[received, total] : listener.progress) {
        QCOMPARE(total, size);
        QVERIFY(received >= last);
        last = received;
    }
    QCOMPARE(last, size);
    QCOMPARE(QFileInfo(downloadPath()).size(), size);
}

void tst_UpdaterDownload::acceptsAnAnswerWithoutAValidLength_data()
{
    QTest::addColumn<QByteArray>("headers");
    QTest::newRow("no length") << QByteArray();
    QTest::newRow("no number") << QByteArray("Content-Length: many\r\n");
    QTest::newRow("negative number") << QByteArray("Content-Length: -4\r\n");
}

void tst_UpdaterDownload::acceptsAnAnswerWithoutAValidLength()
{
    QFETCH(QByteArray, headers);
    const QByteArray body = "up to the end of the connection";
    m_server->answer(u"/new"_s, httpAnswer("200 OK", headers, body));
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(downloadPath()), body);
}

void tst_UpdaterDownload::refusesAnEmptyFile_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("length 0") << httpAnswer("200 OK", "Content-Length: 0\r\n", {});
    QTest::newRow("no length") << httpAnswer("200 OK", {}, {});
    QTest::newRow("no content") << httpAnswer("204 No Content", {}, {});
}

void tst_UpdaterDownload::refusesAnEmptyFile()
{
    QFETCH(QByteArray, answer);
    m_server->answer(u"/new"_s, answer);
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);
    QCOMPARE(listener.heard, QStringList{u"error: The server sent an empty file"_s});
    QVERIFY(!listener.hasFileAtError);
    QVERIFY(!exists(scriptPath()));
}

void tst_UpdaterDownload::readsNoMoreThanTheLength()
{
    m_server->answer(u"/new"_s, httpAnswer("200 OK", "Content-Length: 7\r\n", "program and more"));
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(downloadPath()), "program");
}

void tst_UpdaterDownload::replacesTheFileOfAnEarlierAttempt()
{
    testhome::writeFile(u"tmp/Vaskel_update.exe"_s, "a longer leftover");
    testhome::writeFile(u"tmp/Vaskel_updater.bat"_s, "a longer leftover");
    m_server->answerBody(u"/new"_s, "new");
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(downloadPath()), "new");
    QCOMPARE(contentOf(scriptPath()).value().replace("\r\n", "\n"), "script\n");
}

void tst_UpdaterDownload::followsRedirects()
{
    m_server->answer(u"/new"_s, httpAnswer("307 Temporary Redirect",
                                           "Location: /newer\r\nContent-Length: 6\r\n", "moved!"));
    m_server->answerBody(u"/newer"_s, "new");
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(downloadPath()), "new");
}

void tst_UpdaterDownload::removesTheFileAfterAnError_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("message");
    QTest::newRow("404 with a body") << httpAnswer("404 Not Found", "Content-Length: 4\r\n", "gone")
                                     << u"Error transferring %1 - server replied: Not Found"_s;
    QTest::newRow("cut short") << httpAnswer("200 OK", "Content-Length: 100\r\n", "half")
                               << u"Connection closed"_s;
    QTest::newRow("cut short behind much")
        << httpAnswer("200 OK", "Content-Length: 4000000\r\n", QByteArray(3999999, 'x'))
        << u"Connection closed"_s;
    QTest::newRow("closed at once") << QByteArray() << u"Connection closed"_s;
    QTest::newRow("redirect to a file that is missing")
        << httpAnswer("302 Found", "Location: /missing\r\nContent-Length: 0\r\n", {}) << QString();
    QTest::newRow("redirect to a file that exists")
        << httpAnswer("302 Found", "Location: file:///etc/hostname\r\nContent-Length: 0\r\n", {})
        << u"Refused to connect to \"file:///etc/hostname\""_s;
    QTest::newRow("redirect to data")
        << httpAnswer("302 Found", "Location: data:,program\r\nContent-Length: 0\r\n", {})
        << u"Refused to connect to \"data:,program\""_s;
    QTest::newRow("redirect to itself")
        << httpAnswer("302 Found", "Location: /new\r\nContent-Length: 0\r\n", {})
        << u"Too many redirects"_s;
    QTest::newRow("log-in") << httpAnswer("401 Unauthorized",
                                          "WWW-Authenticate: NTLM\r\nContent-Length: 2\r\n", "{}")
                            << QString();
}

void tst_UpdaterDownload::removesTheFileAfterAnError()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, message);
    m_server->answer(u"/new"_s, answer);
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);

    QCOMPARE(listener.heard.size(), 1);
    QVERIFY2(listener.heard.constFirst().startsWith("error: "_L1),
             qPrintable(listener.heard.constFirst()));
    if (!message.isEmpty()) {
        message.replace("%1"_L1, m_server->url(u"/new"_s));
        QCOMPARE(listener.heard.constFirst().mid(7), message);
    }
    QVERIFY(!listener.hasFileAtError);
    QVERIFY(!exists(downloadPath()));
    QVERIFY(!exists(scriptPath()));
    QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
}

void tst_UpdaterDownload::failsWithoutAServer()
{
    const QString url = m_server->url(u"/new"_s);
    m_server.reset();
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, url), 1);
    QCOMPARE(listener.heard, QStringList{u"error: Connection refused"_s});
    QVERIFY(!exists(downloadPath()));
}

void tst_UpdaterDownload::failsWithoutAUsableAddress_data()
{
    QTest::addColumn<QString>("url");
    QTest::newRow("empty") << QString();
    QTest::newRow("without a scheme") << u"/new"_s;
    QTest::newRow("of an unknown kind") << u"gopher://127.0.0.1/new"_s;
    QTest::newRow("invalid") << u"http://[/new"_s;
    QTest::newRow("of a file")
        << QUrl::fromLocalFile(QCoreApplication::applicationFilePath()).toString();
    QTest::newRow("of data") << u"data:,program"_s;
    QTest::newRow("of a resource") << u"qrc:/icons/vaskel.svg"_s;
    QTest::newRow("of a local socket") << u"unix+http:/tmp/socket"_s;
}

void tst_UpdaterDownload::failsWithoutAUsableAddress()
{
    QFETCH(QString, url);
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, url), 1);
    QCOMPARE(listener.heard.size(), 1);
    QVERIFY(listener.heard.constFirst().size() > 7);
    QVERIFY(!exists(downloadPath()));
}

void tst_UpdaterDownload::sendsNothingOfTheUser()
{
    m_server->answerBody(u"/new?a=b"_s, "new");
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new?a=b"_s)), 0);
    QCOMPARE(m_server->requests.size(), 1);
    const QByteArray request = m_server->requests.constFirst();
    QVERIFY2(request.startsWith("GET /new?a=b HTTP/1.1\r\n"), request.constData());
    QVERIFY2(request.endsWith("\r\n\r\n"), request.constData());
    QByteArrayList names;
    const QByteArrayList lines = request.trimmed().split('\n').mid(1);
    for (const QByteArray &line : lines) {
        names.append(line.left(line.indexOf(':')).toLower());
    }
    std::sort(names.begin(), names.end());
    QCOMPARE(names, QByteArrayList({"accept-encoding", "accept-language", "connection", "host",
                                    "user-agent"}));
    QVERIFY2(request.toLower().contains("\r\nuser-agent: mozilla/5.0\r\n"), request.constData());
}

// Limits the size of files in place of a full disk.
void tst_UpdaterDownload::failsOnAFullDisk_data()
{
    QTest::addColumn<qint64>("room");
    QTest::addColumn<qint64>("size");
    QTest::newRow("none") << qint64(0) << qint64(1);
    QTest::newRow("one byte too little") << qint64(99) << qint64(100);
    QTest::newRow("half") << qint64(1000000) << qint64(2000000);
}

void tst_UpdaterDownload::failsOnAFullDisk()
{
    QFETCH(qint64, room);
    QFETCH(qint64, size);
    m_server->answerZeros(u"/new"_s, size);
    Updater updater;
    const Listener listener(updater);
    {
        const FileSizeLimit limit(room);
        QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);
    }
    QCOMPARE(listener.heard, QStringList{u"error: Failed to write download file"_s});
    QVERIFY(!listener.hasFileAtError);
    QVERIFY(!exists(downloadPath()));
    QVERIFY(!exists(scriptPath()));
    QVERIFY(updater.findChildren<QFile *>().isEmpty());

    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(QFileInfo(downloadPath()).size(), size);
}

void tst_UpdaterDownload::startsNoScriptThatIsCutShort()
{
    m_server->answerBody(u"/new"_s, "new");
    fakePlatform().updateScript = u"#"_s.repeated(100);
    Updater updater;
    const Listener listener(updater);
    {
        const FileSizeLimit limit(50);
        QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);
    }
    QCOMPARE(listener.heard,
             QStringList({u"finished"_s, u"error: Failed to create updater script"_s}));
    QVERIFY(!exists(scriptPath()));
    QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
}

void tst_UpdaterDownload::endsAfterSilence_data()
{
    neverEndsBeforeItsAnswer_data();
}

void tst_UpdaterDownload::endsAfterSilence()
{
    QFETCH(QByteArray, beginning);
    m_server->answer(u"/new"_s, beginning, HttpServer::End::Hang);
    Updater updater;
    updater.setTransferTimeout(500ms);
    const Listener listener(updater);
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);
    QCOMPARE(listener.heard, QStringList{u"error: The server stopped responding"_s});
    QVERIFY(!exists(downloadPath()));
}

void tst_UpdaterDownload::failsIfTheFileCannotBeCreated()
{
    fakePlatform().foreignFiles = {downloadPath()};
    testhome::writeFile(u"tmp/Vaskel_update.exe"_s, "somebody else's");
    m_server->answerBody(u"/new"_s, "new");
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);
    QCOMPARE(listener.heard, QStringList{u"error: Failed to create download file"_s});
    QCOMPARE(contentOf(downloadPath()), "somebody else's");
    QVERIFY(m_server->requests.isEmpty());

    fakePlatform().foreignFiles.clear();
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(downloadPath()), "new");
}

void tst_UpdaterDownload::runsOnIfTheScriptCannotBeCreated()
{
    QVERIFY(QDir().mkpath(scriptPath()));
    m_server->answerBody(u"/new"_s, "new");
    Updater updater;
    const Listener listener(updater);
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);
    QCOMPARE(listener.heard,
             QStringList({u"finished"_s, u"error: Failed to create updater script"_s}));
    QCOMPARE(contentOf(downloadPath()), "new");
    QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
}

void tst_UpdaterDownload::canBeRetried()
{
    m_server->answer(u"/new"_s, httpAnswer("200 OK", "Content-Length: 100\r\n", "half"));
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 1);
    m_server->answerBody(u"/new"_s, "new");
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(downloadPath()), "new");
}

void tst_UpdaterDownload::canBeRetriedFromTheErrorSignal()
{
    m_server->answer(u"/old"_s, httpAnswer("200 OK", "Content-Length: 100\r\n", "half"));
    m_server->answerBody(u"/new"_s, "new");
    Updater updater;
    connect(
        &updater, &Updater::downloadError, this,
        [&] { updater.downloadAndInstall(m_server->url(u"/new"_s)); }, Qt::DirectConnection);
    const QSignalSpy finished(&updater, &Updater::downloadFinished);
    updater.downloadAndInstall(m_server->url(u"/old"_s));
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(contentOf(downloadPath()), "new");
}

void tst_UpdaterDownload::countsOnlyTheLastOfTwoDownloads_data()
{
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<bool>("isUnderWay");
    const QByteArray half =
        httpAnswer("200 OK", "Content-Length: 200000\r\n", QByteArray(100000, 'x'));
    QTest::newRow("at once") << half << false;
    QTest::newRow("in the middle of the first") << half << true;
    QTest::newRow("the first without an answer") << QByteArray() << false;
}

void tst_UpdaterDownload::countsOnlyTheLastOfTwoDownloads()
{
    QFETCH(QByteArray, old);
    QFETCH(bool, isUnderWay);
    m_server->answer(u"/old"_s, old, HttpServer::End::Hang);
    m_server->answer(u"/new"_s, httpAnswer("200 OK", "Content-Length: 3\r\n", "n"),
                     HttpServer::End::Hang);
    Updater updater;
    const Listener listener(updater);
    updater.downloadAndInstall(m_server->url(u"/old"_s));
    if (isUnderWay) {
        QTRY_VERIFY(QFileInfo(downloadPath()).size() > 0);
    }
    updater.downloadAndInstall(m_server->url(u"/new"_s));
    QTRY_VERIFY(!m_server->requests.isEmpty()
                && m_server->requests.constLast().startsWith("GET /new "));
    QTRY_COMPARE(updater.findChildren<QNetworkReply *>().size(), 1);
    QCOMPARE(updater.findChildren<QFile *>().size(), 1);
    QCOMPARE(listener.heard, QStringList());

    m_server->answerBody(u"/new"_s, "new");
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(downloadPath()), "new");
    QCOMPARE(listener.heard, QStringList{u"finished"_s});
}

void tst_UpdaterDownload::abortsTheFirstDownloadIfTheSecondFileCannotBeCreated()
{
    m_server->answer(u"/old"_s, {}, HttpServer::End::Hang);
    Updater updater;
    const Listener listener(updater);
    updater.downloadAndInstall(m_server->url(u"/old"_s));
    QTRY_COMPARE(m_server->requests.size(), 1);
    fakePlatform().foreignFiles = {downloadPath()};
    updater.downloadAndInstall(m_server->url(u"/new"_s));
    QTRY_VERIFY(updater.findChildren<QNetworkReply *>().isEmpty());
    QCOMPARE(listener.heard, QStringList{u"error: Failed to create download file"_s});
    QCOMPARE(m_server->requests.size(), 1);
    QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
}

void tst_UpdaterDownload::neverEndsBeforeItsAnswer_data()
{
    QTest::addColumn<QByteArray>("beginning");
    QTest::addColumn<bool>("hasBody");
    QTest::newRow("headers") << QByteArray("HTTP/1.1 200 OK\r\nServer: x\r\n") << false;
    QTest::newRow("body") << "HTTP/1.1 200 OK\r\nContent-Length: 200000\r\n\r\n"
                                 + QByteArray(100000, 'x')
                          << true;
}

void tst_UpdaterDownload::neverEndsBeforeItsAnswer()
{
    QFETCH(QByteArray, beginning);
    QFETCH(bool, hasBody);
    m_server->answer(u"/new"_s, beginning, HttpServer::End::Hang);
    {
        Updater updater;
        const Listener listener(updater);
        updater.downloadAndInstall(m_server->url(u"/new"_s));
        QTRY_COMPARE(m_server->requests.size(), 1);
        QTRY_COMPARE(QFileInfo(downloadPath()).size() > 0, hasBody);
        QTest::qWait(0);
        QCOMPARE(listener.heard, QStringList());
    }
    QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
}

void tst_UpdaterDownload::ignoresItsSlotsWithoutADownload()
{
    Updater updater;
    const Listener listener(updater);
    QVERIFY(QMetaObject::invokeMethod(&updater, "onDownloadFinished"));
    QVERIFY(QMetaObject::invokeMethod(&updater, "onDownloadReadyRead"));
    QCOMPARE(listener.heard, QStringList());
}

// The updater ignores whether the script starts, so a fake that starts nothing stands for a
// failure.
void tst_UpdaterDownload::quitsEvenIfTheScriptDoesNotStart()
{
    m_server->answerBody(u"/new"_s, "new");
    fakePlatform().updateScript.clear();
    Updater updater;
    QCOMPARE(download(updater, m_server->url(u"/new"_s)), 0);
    QCOMPARE(contentOf(scriptPath()), "");
}

VASKEL_TEST(tst_UpdaterDownload, QCoreApplication)
#include "tst_UpdaterDownload.moc"
