// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/Updater.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/HttpServer.h"

#include <QElapsedTimer>
#include <QMetaMethod>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTest>

#include <chrono>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// The path of the request on this system.
QString path()
{
    const QString system = QSysInfo::kernelType() == "winnt"_L1 ? u"windows"_s : u"linux"_s;
    const QString processor = QSysInfo::buildCpuArchitecture();
    const QString name = processor == "x86_64"_L1  ? u"amd64"_s
                         : processor == "arm64"_L1 ? u"arm64"_s
                                                   : processor;
    return u"/api/v1/update/latest?platform=%1&arch=%2"_s.arg(system, name);
}

QByteArray redirectTo(const QByteArray &target)
{
    return httpAnswer("302 Found", "Content-Length: 0\r\nLocation: " + target + "\r\n", {});
}

} // namespace

/// The check, with a server that sends the answer of each case.
class tst_UpdaterCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void sendsPlatformAndArchitectureOnly();
    void reportsTheOffer();
    void treatsMissingKeysAsEmpty_data();
    void treatsMissingKeysAsEmpty();
    void reportsThatThereIsNoUpdate_data();
    void reportsThatThereIsNoUpdate();
    void refusesAnAnswerThatIsNoObject_data();
    void refusesAnAnswerThatIsNoObject();
    void reportsNetworkErrors_data();
    void reportsNetworkErrors();
    void reportsAMissingServer();
    void followsRedirects();
    void reportsARedirectLoop();
    void waitsForAnAnswerThatDoesNotEnd_data();
    void waitsForAnAnswerThatDoesNotEnd();
    void endsAfterSilence_data();
    void endsAfterSilence();
    void waitsWhileTheAnswerDrips();
    void readsNoMoreThanAMegabyte_data();
    void readsNoMoreThanAMegabyte();
    void readsAMegabyte();
    void neverLogsIn_data();
    void neverLogsIn();
    void asksNobodyWithoutAServer();
    void offersNothingUnsignedIfThereIsAKey();
    void sendsARequestForEachCheck();
    void canBeDestroyedDuringACheck();
    void knowsItsVersion();
    void offersItsInterfaceToTheMetaObject();

private:
    /// The emitted signals, as "name(argument, argument)".
    QStringList check(int count = 1, std::chrono::milliseconds timeout = 30s);

    std::unique_ptr<HttpServer> m_server;
};

void tst_UpdaterCheck::init()
{
    testhome::reset();
    m_server = std::make_unique<HttpServer>();
    qputenv("VASKEL_TEST_UPDATE_SERVER", m_server->address().toLatin1());
}

void tst_UpdaterCheck::cleanup()
{
    qunsetenv("VASKEL_TEST_UPDATE_SERVER");
    qunsetenv("VASKEL_TEST_UPDATE_KEYS");
}

QStringList tst_UpdaterCheck::check(int count, std::chrono::milliseconds timeout)
{
    QStringList heard;
    Updater updater;
    updater.setTransferTimeout(timeout);
    connect(&updater, &Updater::updateAvailable, this,
            [&heard](const QString &version, const QString &changelog, const QString &url,
                     bool isMandatory) {
                heard.append(u"available(%1, %2, %3, %4)"_s.arg(
                    version, changelog, url, isMandatory ? u"mandatory"_s : u"optional"_s));
            });
    connect(&updater, &Updater::noUpdateAvailable, this, [&heard] { heard.append(u"none"_s); });
    connect(&updater, &Updater::checkError, this,
            [&heard](const QString &message) { heard.append("error: "_L1 + message); });
    for (int index = 0; index < count; ++index) {
        updater.checkForUpdate();
    }
    [[maybe_unused]] const bool isDone =
        QTest::qWaitFor([&] { return heard.size() >= count; }, 30000);
    QCoreApplication::processEvents();
    return heard;
}

void tst_UpdaterCheck::sendsPlatformAndArchitectureOnly()
{
    m_server->answerBody(path(), "{}");
    QCOMPARE(check(), QStringList{u"none"_s});
    QCOMPARE(m_server->requests.size(), 1);
    const QByteArray request = m_server->requests.constFirst();
    QVERIFY2(request.startsWith("GET " + path().toUtf8() + " HTTP/1.1\r\n"), request.constData());
    QVERIFY2(!request.contains("1.0.0"), request.constData());
    QVERIFY2(!request.toLower().contains("cookie"), request.constData());
    QVERIFY2(request.endsWith("\r\n\r\n"), request.constData());
}

void tst_UpdaterCheck::reportsTheOffer()
{
    m_server->answerBody(path(), R"({"has_update": true, "version": "2.0 é %1", "mandatory": true,
        "changelog": "one\ntwo <b>", "download_url": "http://host/file?a=%20"})");
    QCOMPARE(check(), QStringList{u"available(2.0 é %1, one\ntwo <b>, http://host/file?a=%20, "
                                  "mandatory)"_s});
}

void tst_UpdaterCheck::treatsMissingKeysAsEmpty_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("nothing else") << QByteArray(R"({"has_update": true})");
    QTest::newRow("other types") << QByteArray(
        R"({"has_update": true, "version": 2, "changelog": [], "download_url": null,
            "mandatory": "true"})");
}

void tst_UpdaterCheck::treatsMissingKeysAsEmpty()
{
    QFETCH(QByteArray, body);
    m_server->answerBody(path(), body);
    QCOMPARE(check(), QStringList{u"available(, , , optional)"_s});
}

void tst_UpdaterCheck::reportsThatThereIsNoUpdate_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("false") << QByteArray(R"({"has_update": false, "version": "2"})");
    QTest::newRow("string") << QByteArray(R"({"has_update": "true", "version": "2"})");
    QTest::newRow("number") << QByteArray(R"({"has_update": 1})");
    QTest::newRow("null") << QByteArray(R"({"has_update": null})");
}

void tst_UpdaterCheck::reportsThatThereIsNoUpdate()
{
    QFETCH(QByteArray, body);
    m_server->answerBody(path(), body);
    QCOMPARE(check(), QStringList{u"none"_s});
}

void tst_UpdaterCheck::refusesAnAnswerThatIsNoObject_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("array") << QByteArray(R"([{"has_update": true}])");
    QTest::newRow("plain text") << QByteArray("has_update");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("object that breaks off") << QByteArray(R"({"has_update": true)");
    QTest::newRow("object with more behind it") << QByteArray(R"({"has_update": true} x)");
    QTest::newRow("bytes that are no text") << QByteArray("{\"has_update\xff\": true}");
    QTest::newRow("deep nesting") << QByteArray(200000, '[');
}

void tst_UpdaterCheck::refusesAnAnswerThatIsNoObject()
{
    QFETCH(QByteArray, body);
    m_server->answerBody(path(), body);
    QCOMPARE(check(), QStringList{u"error: Invalid response"_s});
}

void tst_UpdaterCheck::reportsNetworkErrors_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("message");
    const QByteArray offer = R"({"has_update": true})";
    QTest::newRow("404 with an offer")
        << httpAnswer("404 Not Found", "Content-Length: 20\r\n", offer)
        << u"Error transferring %1 - server replied: Not Found"_s;
    QTest::newRow("500 without a body")
        << httpAnswer("500 Oh no", {}, {}) << u"Error transferring %1 - server replied: Oh no"_s;
    QTest::newRow("body cut short")
        << httpAnswer("200 OK", "Content-Length: 21\r\n", offer) << u"Connection closed"_s;
    QTest::newRow("headers cut short")
        << QByteArray("HTTP/1.1 200 OK\r\nContent-Le") << u"Connection closed"_s;
    QTest::newRow("closed at once") << QByteArray() << u"Connection closed"_s;
    QTest::newRow("redirect to nothing that is known")
        << redirectTo("gopher://127.0.0.1/") << u"Refused to connect to \"gopher://127.0.0.1/\""_s;
    QTest::newRow("redirect to a file") << redirectTo("file:///etc/hostname")
                                        << u"Refused to connect to \"file:///etc/hostname\""_s;
    QTest::newRow("redirect to data")
        << redirectTo("data:,x") << u"Refused to connect to \"data:,x\""_s;
    QTest::newRow("redirect to a local socket")
        << redirectTo("unix+http:/tmp") << u"Refused to connect to \"unix+http:/tmp\""_s;
    QTest::newRow("redirect without an address")
        << httpAnswer("302 Found", "Content-Length: 2\r\n", "{}")
        << u"Refused to connect to \"\""_s;
    QTest::newRow("not HTTP at all") << QByteArray("220 mail.example ESMTP\r\n") << QString();
}

void tst_UpdaterCheck::reportsNetworkErrors()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, message);
    m_server->answer(path(), answer);
    const QStringList heard = check();
    QCOMPARE(heard.size(), 1);
    QVERIFY2(heard.constFirst().startsWith("error: "_L1), qPrintable(heard.constFirst()));
    QVERIFY(heard.constFirst().size() > 7);
    if (!message.isEmpty()) {
        message.replace("%1"_L1, m_server->url(path()));
        QCOMPARE(heard.constFirst().mid(7), message);
    }
}

void tst_UpdaterCheck::reportsAMissingServer()
{
    m_server.reset();
    QCOMPARE(check(), QStringList{u"error: Connection refused"_s});
}

void tst_UpdaterCheck::followsRedirects()
{
    m_server->answer(path(), redirectTo("/elsewhere"));
    m_server->answer(u"/elsewhere"_s, redirectTo(m_server->url(u"/at-last"_s).toUtf8()));
    m_server->answerBody(u"/at-last"_s, R"({"has_update": true, "version": "2"})");
    QCOMPARE(check(), QStringList{u"available(2, , , optional)"_s});
    QCOMPARE(m_server->requests.size(), 3);
}

void tst_UpdaterCheck::reportsARedirectLoop()
{
    m_server->answer(path(), redirectTo(path().toUtf8()));
    QCOMPARE(check(), QStringList{u"error: Too many redirects"_s});
}

void tst_UpdaterCheck::waitsForAnAnswerThatDoesNotEnd_data()
{
    QTest::addColumn<QByteArray>("beginning");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("headers") << QByteArray("HTTP/1.1 200 OK\r\nServer: x\r\n");
    QTest::newRow("one header line") << QByteArray("HTTP/1.1 200 OK\r\nServer: xxxxxxx");
    QTest::newRow("body") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{");
}

void tst_UpdaterCheck::waitsForAnAnswerThatDoesNotEnd()
{
    QFETCH(QByteArray, beginning);
    m_server->answer(path(), beginning, HttpServer::End::Hang);
    auto updater = std::make_unique<Updater>();
    const QSignalSpy available(updater.get(), &Updater::updateAvailable);
    const QSignalSpy none(updater.get(), &Updater::noUpdateAvailable);
    const QSignalSpy errors(updater.get(), &Updater::checkError);
    updater->checkForUpdate();
    QTRY_COMPARE(m_server->requests.size(), 1);

    // A later check does not wait for the first one and is not ended by it.
    m_server->answerBody(path(), "{}");
    updater->checkForUpdate();
    QTRY_COMPARE(none.size(), 1);
    QCOMPARE(available.size() + errors.size(), 0);
    updater.reset();
    QCOMPARE(none.size() + errors.size(), 1);
}

void tst_UpdaterCheck::endsAfterSilence_data()
{
    waitsForAnAnswerThatDoesNotEnd_data();
}

void tst_UpdaterCheck::endsAfterSilence()
{
    QFETCH(QByteArray, beginning);
    m_server->answer(path(), beginning, HttpServer::End::Hang);
    QCOMPARE(check(1, 2s), QStringList{u"error: The server stopped responding"_s});
}

void tst_UpdaterCheck::waitsWhileTheAnswerDrips()
{
    const QByteArray body = R"({"has_update": false})";
    m_server->answerSlowly(path(), httpAnswer("200 OK", "Content-Length: 21\r\n", {}), body, 200ms);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(check(1, 3s), QStringList{u"none"_s});
    QVERIFY(timer.elapsed() > 3500);
}

void tst_UpdaterCheck::readsNoMoreThanAMegabyte_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<qint64>("zeros");
    const QByteArray offer = R"({"has_update": true, "version": "2"})";
    QTest::newRow("one byte too many")
        << httpAnswer("200 OK", {}, offer + QByteArray(1024 * 1024 + 1 - offer.size(), ' '))
        << qint64(0);
    QTest::newRow("endless") << httpAnswer("200 OK", {}, offer)
                             << std::numeric_limits<qint64>::max();
    QTest::newRow("endless redirect") << httpAnswer("302 Found", "Location: file:///\r\n", "x")
                                      << std::numeric_limits<qint64>::max();
}

void tst_UpdaterCheck::readsNoMoreThanAMegabyte()
{
    QFETCH(QByteArray, answer);
    QFETCH(qint64, zeros);
    m_server->answerZeros(path(), answer, zeros);
    const QStringList heard = check();
    QCOMPARE(heard.size(), 1);
    QVERIFY2(heard.constFirst() == "error: Invalid response"_L1
                 || heard.constFirst().startsWith("error: Refused"_L1),
             qPrintable(heard.constFirst()));
}

void tst_UpdaterCheck::readsAMegabyte()
{
    const QByteArray offer = R"({"has_update": true, "version": "2"})";
    m_server->answerBody(path(), offer + QByteArray(1024 * 1024 - offer.size(), ' '));
    QCOMPARE(check(), QStringList{u"available(2, , , optional)"_s});
}

void tst_UpdaterCheck::neverLogsIn_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<QByteArray>("challenge");
    for (const char *scheme :
         {"Basic realm=\"x\"", "Digest realm=\"x\", nonce=\"1\"", "NTLM", "Negotiate"}) {
        QTest::newRow(scheme) << QByteArray("401 Unauthorized")
                              << QByteArray("WWW-Authenticate: ") + scheme + "\r\n";
        QTest::addRow("%s to a proxy", scheme)
            << QByteArray("407 Proxy Authentication Required")
            << QByteArray("Proxy-Authenticate: ") + scheme + "\r\n";
    }
}

// Qt would answer an NTLM challenge without asking; a second request would be that answer.
void tst_UpdaterCheck::neverLogsIn()
{
    QFETCH(QByteArray, status);
    QFETCH(QByteArray, challenge);
    m_server->answer(path(), httpAnswer(status, challenge + "Content-Length: 2\r\n", "{}"));
    const QStringList heard = check();
    QCOMPARE(heard.size(), 1);
    QVERIFY2(heard.constFirst().startsWith("error: "_L1), qPrintable(heard.constFirst()));
    QCOMPARE(m_server->requests.size(), 1);
    QVERIFY(!m_server->requests.constFirst().toLower().contains("authorization"));
}

void tst_UpdaterCheck::asksNobodyWithoutAServer()
{
    qputenv("VASKEL_TEST_UPDATE_SERVER", "none");
    Updater updater;
    const QSignalSpy errors(&updater, &Updater::checkError);
    const QSignalSpy none(&updater, &Updater::noUpdateAvailable);
    updater.checkForUpdate();
    QVERIFY(updater.findChildren<QNetworkReply *>().isEmpty());
    QTest::qWait(0);
    QCOMPARE(errors.size() + none.size(), 0);
}

void tst_UpdaterCheck::offersNothingUnsignedIfThereIsAKey()
{
    qputenv("VASKEL_TEST_UPDATE_KEYS", QByteArray(64, 'a'));
    m_server->answerBody(path(), R"({"has_update": true, "version": "2", "signature": ""})");
    QCOMPARE(check(), QStringList{u"none"_s});
}

void tst_UpdaterCheck::sendsARequestForEachCheck()
{
    m_server->answerBody(path(), "{}");
    QCOMPARE(check(3), QStringList({u"none"_s, u"none"_s, u"none"_s}));
    QCOMPARE(m_server->requests.size(), 3);
}

void tst_UpdaterCheck::canBeDestroyedDuringACheck()
{
    m_server->answerBody(path(), "{}");
    {
        Updater updater;
        updater.checkForUpdate();
    }
    QCOMPARE(check(), QStringList{u"none"_s});
}

void tst_UpdaterCheck::knowsItsVersion()
{
    QCOMPARE(Updater().currentVersion(), u"1.0.0"_s);
}

void tst_UpdaterCheck::offersItsInterfaceToTheMetaObject()
{
    QStringList methods;
    const QMetaObject &meta = Updater::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        methods.append(QString::fromLatin1(method.name()) + u'/'
                       + QString::number(method.parameterCount()));
    }
    const QStringList expected{
        u"updateAvailable/4"_s,    u"noUpdateAvailable/0"_s,   u"checkError/1"_s,
        u"downloadProgress/2"_s,   u"downloadFinished/0"_s,    u"downloadError/1"_s,
        u"onDownloadFinished/0"_s, u"onDownloadReadyRead/0"_s, u"checkForUpdate/0"_s,
        u"downloadAndInstall/1"_s, u"currentVersion/0"_s};
    QCOMPARE(methods, expected);
}

VASKEL_TEST(tst_UpdaterCheck, QCoreApplication)
#include "tst_UpdaterCheck.moc"
