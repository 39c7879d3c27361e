// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/Updater.h"

#include "support/FakePlatform.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/FileSizeLimit.h"
#include "update/HttpServer.h"
#include "update/TestKey.h"

#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using filecontent::contentOf;
using namespace std::chrono_literals;

namespace {

using Forge = std::function<QJsonObject()>;

constexpr auto endless = std::numeric_limits<qint64>::max();
const QByteArray program("the new program");
const QString mismatch =
    u"error: The downloaded file is not the one that was signed. Nothing was changed."_s;

QString temporaryFile(const QString &name)
{
    return testhome::path() + "/tmp/"_L1 + name;
}

QString downloadPath()
{
    return temporaryFile(u"Vaskel_update.exe"_s);
}

QByteArray withLength(const QByteArray &body)
{
    return httpAnswer("200 OK", "Content-Length: " + QByteArray::number(body.size()) + "\r\n",
                      body);
}

QByteArray redirectTo(const QByteArray &target)
{
    return httpAnswer("302 Found", "Content-Length: 0\r\nLocation: " + target + "\r\n", {});
}

} // namespace

/// An updater with two keys, against a server in an attacker's hands. Only the signed file may be
/// installed, and only a signed offer may reach the user.
class tst_UpdateAttacks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void installsWhatEitherKeySigned_data();
    void installsWhatEitherKeySigned();
    void offersNoOtherAnswer_data();
    void offersNoOtherAnswer();
    void offersNoOtherAddress_data();
    void offersNoOtherAddress();
    void followsNoRedirectOfTheCheck_data();
    void followsNoRedirectOfTheCheck();
    void installsNothingElseForAnyFlippedByte();
    void installsNoOtherDownload_data();
    void installsNoOtherDownload();
    void installsNoFileFromAnotherAddress_data();
    void installsNoFileFromAnotherAddress();
    void cutsAnEndlessAnswer();
    void cutsAnEndlessDownload_data();
    void cutsAnEndlessDownload();
    void cutsADownloadThatDripsOn();
    void readsAnAnswerThatDrips();
    void ignoresAnUnsignedAnswerThatDrips();
    void endsACheckThatDripsOn();
    void endsADownloadThatDripsOn();
    void endsAfterSilence();
    void installsNothingFromAFullDisk();
    void installsNoFileThatIsExchanged_data();
    void installsNoFileThatIsExchanged();
    void downloadsNothingWithoutAnOffer();
    void forgetsAnOfferWithTheNextAnswer();

private:
    /// The signals of a check, and if it offers something, of the download from "url" that follows.
    QStringList update(const QString &url = {});
    QStringList check();
    QStringList download(const QString &url);
    QStringList waitForASignal();
    void serve(const QJsonObject &answer)
    {
        m_server->answerBody(updateCheckPath(), jsonOf(answer));
    }
    bool isUntouched() const;

    /// What the user is asked if the offer is as it was signed.
    QString offer() const { return u"offer: 2.0.0 "_s + m_release.changelog; }
    /// The signed answer with another value.
    QJsonObject signedWith(const QString &key, const QJsonValue &value) const;

    TestKey m_key;
    TestKey m_secondKey;
    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<Updater> m_updater;
    QStringList m_heard;
    QEventLoop m_loop;
    Release m_release;
};

void tst_UpdateAttacks::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    m_server = std::make_unique<HttpServer>();
    m_release = {program, m_server->url(u"/new"_s)};
    m_server->answerBody(u"/new"_s, program);
    serve(m_release.signedBy(m_key));
    qputenv("VASKEL_TEST_UPDATE_SERVER", m_server->address().toLatin1());
    qputenv("VASKEL_TEST_UPDATE_KEYS", m_key.publicKey() + ' ' + m_secondKey.publicKey());

    m_heard.clear();
    m_updater = std::make_unique<Updater>();
    const auto hear = [this](const QString &what) {
        m_heard.append(what);
        m_loop.quit();
    };
    connect(m_updater.get(), &Updater::updateAvailable, this,
            [hear](const QString &version, const QString &changelog) {
                hear("offer: "_L1 + version + u' ' + changelog);
            });
    connect(m_updater.get(), &Updater::noUpdateAvailable, this, [hear] { hear(u"none"_s); });
    connect(m_updater.get(), &Updater::checkError, this,
            [hear](const QString &message) { hear("check: "_L1 + message); });
    connect(m_updater.get(), &Updater::downloadFinished, this, [hear] { hear(u"finished"_s); });
    connect(m_updater.get(), &Updater::downloadError, this,
            [hear](const QString &message) { hear("error: "_L1 + message); });
}

void tst_UpdateAttacks::cleanup()
{
    qunsetenv("VASKEL_TEST_UPDATE_SERVER");
    qunsetenv("VASKEL_TEST_UPDATE_KEYS");
    m_updater.reset();
}

QStringList tst_UpdateAttacks::check()
{
    m_heard.clear();
    m_updater->checkForUpdate();
    return waitForASignal();
}

QStringList tst_UpdateAttacks::download(const QString &url)
{
    m_heard.clear();
    m_updater->downloadAndInstall(url);
    return waitForASignal();
}

// QTest::qWaitFor() would sleep for some milliseconds each of many hundred times. The list is never
// empty.
QStringList tst_UpdateAttacks::waitForASignal()
{
    if (m_heard.isEmpty()) {
        QTimer watchdog;
        watchdog.callOnTimeout(&m_loop, &QEventLoop::quit);
        watchdog.start(30s);
        m_loop.exec();
    }
    return m_heard.isEmpty() ? QStringList{u"no signal within 30 s"_s} : m_heard;
}

QStringList tst_UpdateAttacks::update(const QString &url)
{
    QStringList checked = check();
    if (!checked.constFirst().startsWith("offer: "_L1)) {
        return checked;
    }
    return checked + download(url.isEmpty() ? m_release.url : url);
}

// Neither a script nor a file is left.
bool tst_UpdateAttacks::isUntouched() const
{
    return fakePlatform().startedUpdateScripts.isEmpty() && !QFileInfo::exists(downloadPath())
           && !QFileInfo::exists(temporaryFile(u"Vaskel_updater.bat"_s));
}

QJsonObject tst_UpdateAttacks::signedWith(const QString &key, const QJsonValue &value) const
{
    QJsonObject answer = m_release.signedBy(m_key);
    answer.insert(key, value);
    return answer;
}

void tst_UpdateAttacks::installsWhatEitherKeySigned_data()
{
    QTest::addColumn<bool>("isSecond");
    QTest::newRow("first key") << false;
    QTest::newRow("second key") << true;
}

void tst_UpdateAttacks::installsWhatEitherKeySigned()
{
    QFETCH(bool, isSecond);
    serve(m_release.signedBy(isSecond ? m_secondKey : m_key));
    QCOMPARE(update(), QStringList({offer(), u"finished"_s}));
    QCOMPARE(contentOf(downloadPath()), program);
    QCOMPARE(fakePlatform().startedUpdateScripts,
             QStringList{temporaryFile(u"Vaskel_updater.bat"_s)});
}

void tst_UpdateAttacks::offersNoOtherAnswer_data()
{
    QTest::addColumn<Forge>("forge");
    const auto row = [](const char *name, const Forge &forge) {
        QTest::newRow(name) << forge;
    };
    const auto release = [this](QString Release::*field, const QString &value) {
        return [=, this] {
            Release changed = m_release;
            changed.*field = value;
            return changed.signedBy(m_key);
        };
    };
    const auto answer = [this](const QString &key, const QJsonValue &value) {
        return [=, this] {
            return signedWith(key, value);
        };
    };
    row("wrong key", [this] { return m_release.signedBy(TestKey()); });
    row("no signature", answer(u"signature"_s, QJsonValue::Undefined));
    row("signature of another version", answer(u"version"_s, u"2.0.1"_s));
    row("older version", release(&Release::version, u"0.9.9"_s));
    row("same version", release(&Release::version, u"1.0.0"_s));
    row("same version, shorter", release(&Release::version, u"1.0"_s));
    row("version that is no number", release(&Release::version, u"two"_s));
    row("another platform", release(&Release::platform, u"amiga"_s));
    row("another architecture", release(&Release::architecture, u"m68k"_s));
    row("change log exchanged", answer(u"changelog"_s, u"Free money"_s));
    row("change log left out", answer(u"changelog"_s, QJsonValue::Undefined));
    row("other size", answer(u"size"_s, 16));
    row("other hash", answer(u"sha256"_s, QString(64, u'0')));
}

void tst_UpdateAttacks::offersNoOtherAnswer()
{
    QFETCH(Forge, forge);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Ignoring an update "_s));
    serve(forge());
    QCOMPARE(check(), QStringList{u"none"_s});
    QCOMPARE(m_server->requests.size(), 1);
    // Without an offer, no download begins.
    QCOMPARE(download(m_release.url),
             QStringList{u"error: There is no signed update. Nothing was changed."_s});
    QCOMPARE(m_server->requests.size(), 1);
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::offersNoOtherAddress_data()
{
    QTest::addColumn<QString>("url");
    // The addresses of 192.0.2.0/24 belong to nobody.
    QTest::newRow("plain http") << u"http://192.0.2.1/new"_s;
    QTest::newRow("http in capitals") << u"HTTP://192.0.2.1/new"_s;
    QTest::newRow("this machine as the user") << u"http://127.0.0.1@192.0.2.1/new"_s;
    QTest::newRow("this machine as a subdomain") << u"http://localhost.example/new"_s;
    QTest::newRow("this machine's number as a name") << u"http://127.0.0.1.example/new"_s;
    QTest::newRow("any address") << u"http://0.0.0.0/new"_s;
    QTest::newRow("file") << u"file:///etc/hostname"_s;
    QTest::newRow("file on this machine") << u"file://localhost/etc/hostname"_s;
    QTest::newRow("data") << u"data:,program"_s;
    QTest::newRow("local socket") << u"unix+http:/tmp/socket"_s;
    QTest::newRow("resource") << u"qrc:/icons/vaskel.svg"_s;
    QTest::newRow("ftp") << u"ftp://127.0.0.1/new"_s;
    QTest::newRow("none") << QString();
    QTest::newRow("invalid") << u"https://[/new"_s;
}

void tst_UpdateAttacks::offersNoOtherAddress()
{
    QFETCH(QString, url);
    const QString ignored = u"Ignoring an update whose address is not https"_s;
    QTest::ignoreMessage(QtWarningMsg, qPrintable(ignored));
    serve(signedWith(u"download_url"_s, url));
    QCOMPARE(check(), QStringList{u"none"_s});
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::followsNoRedirectOfTheCheck_data()
{
    offersNoOtherAddress_data();
}

void tst_UpdateAttacks::followsNoRedirectOfTheCheck()
{
    QFETCH(QString, url);
    m_server->answer(updateCheckPath(), redirectTo(url.toUtf8()));
    const QStringList heard = check();
    QCOMPARE(heard.size(), 1);
    QVERIFY2(heard.constFirst().startsWith("check: Refused to connect to "_L1),
             qPrintable(heard.constFirst()));
    QCOMPARE(m_server->requests.size(), 1);
}

// Many flips change nothing that is signed, such as one in the key "mandatory": the offer is then
// the signed one, and so is the file. The wrong addresses are on this machine.
void tst_UpdateAttacks::installsNothingElseForAnyFlippedByte()
{
    m_updater->setTransferTimeout(2s);
    const QByteArray body = jsonOf(m_release.signedBy(m_key));
    int refused = 0;
    for (qsizetype index = 0; index < body.size(); ++index) {
        fakePlatform().startedUpdateScripts.clear();
        QByteArray flipped = body;
        flipped[index] = char(flipped.at(index) ^ 1);
        m_server->answerBody(updateCheckPath(), flipped);
        const QStringList checked = check();
        if (checked.constFirst() != offer()) {
            QVERIFY2(checked == QStringList{u"none"_s}
                         || checked == QStringList{u"check: Invalid response"_s},
                     flipped.constData());
            ++refused;
            continue;
        }
        const QString url = QJsonDocument::fromJson(flipped)["download_url"_L1].toString();
        const QStringList heard = download(url);
        if (heard == QStringList{u"finished"_s}) {
            QCOMPARE(contentOf(downloadPath()), program);
        } else {
            QVERIFY2(heard.constFirst().startsWith("error: "_L1), qPrintable(heard.constFirst()));
            QVERIFY(fakePlatform().startedUpdateScripts.isEmpty());
        }
    }
    // At least each flip in what is signed is refused.
    const QJsonObject answer = m_release.signedBy(m_key);
    QVERIFY2(refused > 128 + 64 + jsonOf({{u"changelog"_s, answer["changelog"_L1]}}).size(),
             qPrintable(QString::number(refused)));
}

void tst_UpdateAttacks::installsNoOtherDownload_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("error");
    const QByteArray longer = program + '!';
    const QByteArray other(program.size(), 'x');
    QTest::newRow("another file") << withLength(other) << mismatch;
    QTest::newRow("last byte changed") << withLength(program.chopped(1) + 'M') << mismatch;
    QTest::newRow("shorter") << withLength(program.chopped(1)) << mismatch;
    QTest::newRow("shorter, without a length")
        << httpAnswer("200 OK", {}, program.chopped(1)) << mismatch;
    QTest::newRow("truncated") << httpAnswer("200 OK", "Content-Length: 15\r\n", program.chopped(1))
                               << u"error: Connection closed"_s;
    QTest::newRow("longer") << withLength(longer) << mismatch;
    QTest::newRow("longer, without a length") << httpAnswer("200 OK", {}, longer) << mismatch;
    QTest::newRow("twice") << withLength(program + program) << mismatch;
    QTest::newRow("empty") << withLength({}) << u"error: The server sent an empty file"_s;
    QTest::newRow("404 with the file")
        << httpAnswer("404 Not Found", "Content-Length: 15\r\n", program) << QString();
    QTest::newRow("401") << httpAnswer("401 Unauthorized",
                                       "WWW-Authenticate: NTLM\r\nContent-Length: 15\r\n", program)
                         << QString();
    for (const char *target : {"http://192.0.2.1/new", "file:///etc/hostname", "data:,program"}) {
        QTest::addRow("redirect to %s", target)
            << redirectTo(target)
            << u"error: Refused to connect to \"%1\""_s.arg(QString::fromLatin1(target));
    }
}

void tst_UpdateAttacks::installsNoOtherDownload()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, error);
    m_server->answer(u"/new"_s, answer);
    const QStringList heard = update();
    QCOMPARE(heard.size(), 2);
    QVERIFY2(heard.at(1).startsWith("error: "_L1), qPrintable(heard.at(1)));
    if (!error.isEmpty()) {
        QCOMPARE(heard.at(1), error);
    }
    QVERIFY(isUntouched());
    // Without a length, the end of the connection ends the answer. If Qt sees the end before the
    // answer, it sends the same request again.
    if (!answer.contains("Content-Length")) {
        m_server->requests.removeIf([previous = QByteArray()](const QByteArray &request) mutable {
            return request == std::exchange(previous, request);
        });
    }
    QCOMPARE(m_server->requests.size(), 2);
    QVERIFY(!m_server->requests.constLast().toLower().contains("authorization"));

    // The offer is still good.
    m_server->answerBody(u"/new"_s, program);
    QCOMPARE(download(m_release.url), QStringList{u"finished"_s});
    QCOMPARE(contentOf(downloadPath()), program);
}

void tst_UpdateAttacks::installsNoFileFromAnotherAddress_data()
{
    offersNoOtherAddress_data();
}

void tst_UpdateAttacks::installsNoFileFromAnotherAddress()
{
    QFETCH(QString, url);
    QCOMPARE(check(), QStringList{offer()});
    const QStringList heard = download(url);
    QCOMPARE(heard.size(), 1);
    QVERIFY2(heard.constFirst().startsWith("error: Refused to connect to "_L1),
             qPrintable(heard.constFirst()));
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::cutsAnEndlessAnswer()
{
    m_server->answerZeros(updateCheckPath(),
                          httpAnswer("200 OK", {}, jsonOf(m_release.signedBy(m_key))), endless);
    QCOMPARE(check(), QStringList{u"check: Invalid response"_s});
}

void tst_UpdateAttacks::cutsAnEndlessDownload_data()
{
    QTest::addColumn<QByteArray>("headers");
    QTest::newRow("no length") << QByteArray();
    QTest::newRow("the signed length") << QByteArray("Content-Length: 15\r\n");
    QTest::newRow("another length") << QByteArray("Content-Length: 9000000000000\r\n");
}

void tst_UpdateAttacks::cutsAnEndlessDownload()
{
    QFETCH(QByteArray, headers);
    m_server->answerZeros(u"/new"_s, httpAnswer("200 OK", headers, program), endless);
    const bool isWhole = headers.contains(" 15\r");
    QCOMPARE(update(), QStringList({offer(), isWhole ? u"finished"_s : mismatch}));
    QVERIFY(isWhole ? contentOf(downloadPath()) == program : isUntouched());
}

void tst_UpdateAttacks::cutsADownloadThatDripsOn()
{
    m_server->answerSlowly(u"/new"_s, httpAnswer("200 OK", {}, {}), program + QByteArray(1000, 'x'),
                           10ms);
    QCOMPARE(update(), QStringList({offer(), mismatch}));
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::readsAnAnswerThatDrips()
{
    const QByteArray body = jsonOf(m_release.signedBy(m_key));
    const QByteArray length = "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    m_server->answerSlowly(updateCheckPath(), httpAnswer("200 OK", length, {}), body, 1ms);
    QCOMPARE(update(), QStringList({offer(), u"finished"_s}));
}

void tst_UpdateAttacks::ignoresAnUnsignedAnswerThatDrips()
{
    const QByteArray body = jsonOf(m_release.signedBy(TestKey()));
    const QByteArray length = "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Ignoring an update "_s));
    m_server->answerSlowly(updateCheckPath(), httpAnswer("200 OK", length, {}), body, 1ms);
    QCOMPARE(update(), QStringList{u"none"_s});
}

void tst_UpdateAttacks::endsACheckThatDripsOn()
{
    m_updater->setTotalTimeouts(300ms, 1h);
    m_server->answerSlowly(updateCheckPath(), httpAnswer("200 OK", {}, {}), QByteArray(100000, ' '),
                           10ms);
    QCOMPARE(check(), QStringList{u"check: The server stopped responding"_s});
}

void tst_UpdateAttacks::endsADownloadThatDripsOn()
{
    m_release.file = QByteArray(100000, 'x');
    serve(m_release.signedBy(m_key));
    m_updater->setTotalTimeouts(1h, 300ms);
    m_server->answerSlowly(u"/new"_s, httpAnswer("200 OK", {}, {}), m_release.file, 10ms);
    QCOMPARE(update(), QStringList({offer(), u"error: The server stopped responding"_s}));
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::endsAfterSilence()
{
    m_updater->setTransferTimeout(500ms);
    QCOMPARE(check(), QStringList{offer()});
    m_server->answer(u"/new"_s, httpAnswer("200 OK", "Content-Length: 15\r\n", "the new"),
                     HttpServer::End::Hang);
    QCOMPARE(download(m_release.url), QStringList{u"error: The server stopped responding"_s});
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::installsNothingFromAFullDisk()
{
    m_release.file = QByteArray(2000000, 'x');
    m_server->answerBody(u"/new"_s, m_release.file);
    serve(m_release.signedBy(m_key));
    const FileSizeLimit limit(1000000);
    QCOMPARE(update(), QStringList({offer(), u"error: Failed to write download file"_s}));
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::installsNoFileThatIsExchanged_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("of the same size") << true << QByteArray(program.size(), 'x');
    QTest::newRow("longer") << true << program + 'x';
    QTest::newRow("empty") << true << QByteArray();
    QTest::newRow("none at all") << false << QByteArray();
}

// Exchanges the file between the comparison of the download and the start of the script.
void tst_UpdateAttacks::installsNoFileThatIsExchanged()
{
    QFETCH(bool, isThere);
    QFETCH(QByteArray, content);
    connect(m_updater.get(), &Updater::downloadFinished, this, [&] {
        QVERIFY(QFile::remove(downloadPath()));
        if (isThere) {
            testhome::writeFile(u"tmp/Vaskel_update.exe"_s, content);
        }
    });
    update();
    QTRY_COMPARE(m_heard, QStringList({u"finished"_s, mismatch}));
    QVERIFY(isUntouched());
}

void tst_UpdateAttacks::downloadsNothingWithoutAnOffer()
{
    QCOMPARE(download(m_release.url),
             QStringList{u"error: There is no signed update. Nothing was changed."_s});
    QVERIFY(m_server->requests.isEmpty());
}

void tst_UpdateAttacks::forgetsAnOfferWithTheNextAnswer()
{
    QCOMPARE(check(), QStringList{offer()});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Ignoring an update "_s));
    serve(m_release.signedBy(TestKey()));
    QCOMPARE(check(), QStringList{u"none"_s});
    QCOMPARE(download(m_release.url),
             QStringList{u"error: There is no signed update. Nothing was changed."_s});
}

VASKEL_TEST(tst_UpdateAttacks, QCoreApplication)
#include "tst_UpdateAttacks.moc"
