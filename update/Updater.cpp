// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/Updater.h"

#include "platform/PrivateFile.h"
#include "platform/PrivateFolder.h"
#include "platform/UpdateScript.h"
#include "update/AnonymousProxyFactory.h"
#include "update/UpdateAddress.h"
#include "update/UpdateServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Limits the data that waits for the disk; a fast network could fill the memory.
constexpr qint64 downloadBufferSize = 256 * 1024;
constexpr qint64 answerLimit = 1024 * 1024;
constexpr int maximumRedirects = 50; // as many as Qt follows

// Empty if there is no folder.
QString temporaryPath(const QString &fileName)
{
    const QString folder = platform::temporaryFolder();
    return folder.isEmpty() ? QString() : QDir(folder).filePath(fileName);
}

bool create(QFile &file, QIODevice::OpenMode mode)
{
    return !file.fileName().isEmpty() && platform::openPrivateFile(file, mode);
}

QString errorText(const QNetworkReply &reply)
{
    // Replies that are aborted on purpose are disconnected first, so this one timed out.
    const bool isTimeout = reply.error() == QNetworkReply::OperationCanceledError
                           || reply.error() == QNetworkReply::TimeoutError;
    return isTimeout ? u"The server stopped responding"_s : reply.errorString();
}

// On a busy machine Qt sometimes reports no error for a connection that ends early. The header has
// the length of the compressed data, so compressed files cannot be checked.
bool isCutShort(const QNetworkReply &reply, qint64 received)
{
    return !reply.hasRawHeader("Content-Encoding")
           && received < reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
}

QUrl checkUrl()
{
    return QUrl(u"%1/api/v1/update/latest?platform=%2&arch=%3"_s.arg(
        updateServer(), QStringLiteral(UPDATE_PLATFORM), QStringLiteral(UPDATE_ARCHITECTURE)));
}

// Logs why the offer is ignored, if it is.
std::optional<SignedUpdate> trustedOffer(const QJsonObject &answer, const QString &currentVersion)
{
    std::optional<SignedUpdate> update = readSignedUpdate(
        answer, QStringLiteral(UPDATE_PLATFORM), QStringLiteral(UPDATE_ARCHITECTURE), updateKeys());
    if (!update) {
        qWarning("Ignoring an update without a valid signature for this system");
    } else if (!isNewerVersion(answer["version"_L1].toString(), currentVersion)) {
        qWarning("Ignoring an update that is not newer than this version");
    } else if (!mayConnectTo(QUrl(answer["download_url"_L1].toString()))) {
        qWarning("Ignoring an update whose address is not https");
    } else {
        return update;
    }
    return {};
}

QString mismatch()
{
    return u"The downloaded file is not the one that was signed. Nothing was changed."_s;
}

bool hasContentOf(const QString &path, const SignedUpdate &update)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)
        || file.size() != update.size) {
        return false;
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return hash.addData(&file) && hash.result() == update.sha256;
}

} // namespace

Updater::Updater(QObject *parent)
    : QObject(parent)
    , m_manager(new QNetworkAccessManager(this))
{
    m_manager->setProxyFactory(new AnonymousProxyFactory);
}

QString Updater::currentVersion() const
{
    return QStringLiteral(UPDATE_VERSION);
}

void Updater::setTransferTimeout(std::chrono::milliseconds timeout)
{
    m_transferTimeout = timeout;
}

void Updater::setTotalTimeouts(std::chrono::milliseconds check, std::chrono::milliseconds download)
{
    m_checkTimeout = check;
    m_downloadTimeout = download;
}

QNetworkReply *Updater::get(const QUrl &url, std::chrono::milliseconds total)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(int(m_transferTimeout.count()));
    // Manual also keeps Qt from answering a 401 or 407; on Windows it would log on with the user's
    // account.
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // followRedirect() does it: Qt's own way may lead to other schemes.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    QNetworkReply *reply = m_manager->get(request);
    // A server that sends a byte now and then would never be silent.
    auto *limit = new QTimer(reply);
    limit->callOnTimeout(reply, &QNetworkReply::abort);
    limit->start(total);
    return reply;
}

template <typename Next, typename Fail>
void Updater::followRedirect(QNetworkReply *reply, int redirectsLeft, Next next, Fail fail)
{
    // Not at the end of the reply: the body of a redirect may be endless.
    connect(reply, &QNetworkReply::metaDataChanged, this, [=, this] {
        if (!isRedirect(*reply)) {
            return;
        }
        reply->disconnect(this);
        reply->deleteLater();
        const QUrl target = redirectTarget(*reply);
        const QString error = redirectError(reply->url(), target, redirectsLeft);
        if (error.isEmpty()) {
            next(target);
        } else {
            fail(error);
        }
    });
}

void Updater::checkForUpdate()
{
    if (!updateServer().isEmpty()) {
        check(checkUrl(), maximumRedirects);
    }
}

void Updater::check(const QUrl &url, int redirectsLeft)
{
    QNetworkReply *reply = get(url, m_checkTimeout);
    // Larger than the limit: a full buffer takes no more data, and Qt reports the last piece only
    // when more arrives.
    reply->setReadBufferSize(2 * answerLimit);
    followRedirect(
        reply, redirectsLeft,
        [this, redirectsLeft](const QUrl &target) { check(target, redirectsLeft - 1); },
        [this](const QString &error) { Q_EMIT checkError(error); });
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        if (reply->bytesAvailable() > answerLimit) {
            reply->disconnect(this);
            reply->deleteLater();
            Q_EMIT checkError(u"Invalid response"_s);
        }
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply] { readAnswer(reply); });
}

void Updater::readAnswer(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError) {
        Q_EMIT checkError(errorText(*reply));
        return;
    }
    const bool isTooLong = reply->bytesAvailable() > answerLimit;
    const QJsonDocument document = QJsonDocument::fromJson(reply->readAll());
    if (isTooLong || !document.isObject()) {
        Q_EMIT checkError(u"Invalid response"_s);
        return;
    }
    const QJsonObject answer = document.object();
    if (!answer["has_update"_L1].toBool()) {
        Q_EMIT noUpdateAvailable();
        return;
    }
    if (!updateKeys().isEmpty()) {
        m_offer = trustedOffer(answer, currentVersion());
        if (!m_offer) {
            Q_EMIT noUpdateAvailable();
            return;
        }
    }
    m_downloadUrl = answer["download_url"_L1].toString();
    Q_EMIT updateAvailable(answer["version"_L1].toString(), answer["changelog"_L1].toString(),
                           m_downloadUrl, answer["mandatory"_L1].toBool());
}

void Updater::downloadAndInstall(const QString &url)
{
    abortDownload();
    const QUrl address(url);
    if (!mayConnectTo(address)) {
        Q_EMIT downloadError(refusal(address));
        return;
    }
    if (!updateKeys().isEmpty() && !m_offer) {
        Q_EMIT downloadError(u"There is no signed update. Nothing was changed."_s);
        return;
    }
    m_expected = m_offer;
    m_downloadHash.reset();
    m_downloadFile = new QFile(temporaryPath(u"Vaskel_update.exe"_s), this);
    if (!create(*m_downloadFile, QIODevice::WriteOnly)) {
        Q_EMIT downloadError(u"Failed to create download file"_s);
        return;
    }

    download(address, maximumRedirects);
}

void Updater::download(const QUrl &url, int redirectsLeft)
{
    m_downloadReply = get(url, m_downloadTimeout);
    m_downloadReply->setReadBufferSize(downloadBufferSize);
    followRedirect(
        m_downloadReply, redirectsLeft,
        [this, redirectsLeft](const QUrl &target) { download(target, redirectsLeft - 1); },
        [this](const QString &error) { failDownload(error); });
    connect(m_downloadReply, &QNetworkReply::downloadProgress, this, &Updater::downloadProgress);
    connect(m_downloadReply, &QNetworkReply::readyRead, this, &Updater::onDownloadReadyRead);
    connect(m_downloadReply, &QNetworkReply::finished, this, &Updater::onDownloadFinished);
}

void Updater::abortDownload()
{
    if (QNetworkReply *reply = std::exchange(m_downloadReply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    // Close the file so that the next download can replace it on every system.
    delete std::exchange(m_downloadFile, nullptr);
}

void Updater::failDownload(const QString &message)
{
    const QString path = m_downloadFile->fileName();
    abortDownload();
    QFile::remove(path);
    Q_EMIT downloadError(message);
}

bool Updater::writeDownload()
{
    const QByteArray data = m_downloadReply->readAll();
    if (m_expected && m_downloadFile->pos() + data.size() > m_expected->size) {
        failDownload(mismatch());
        return false;
    }
    m_downloadHash.addData(data);
    // QFile holds data back; flush() is what tells of a full disk.
    if (m_downloadFile->write(data) == data.size() && m_downloadFile->flush()) {
        return true;
    }
    failDownload(u"Failed to write download file"_s);
    return false;
}

void Updater::onDownloadReadyRead()
{
    if (m_downloadReply && m_downloadFile) {
        writeDownload();
    }
}

void Updater::onDownloadFinished()
{
    if (!m_downloadReply || !m_downloadFile) {
        return;
    }
    if (m_downloadReply->error() != QNetworkReply::NoError) {
        failDownload(errorText(*m_downloadReply));
        return;
    }
    if (!writeDownload()) {
        return;
    }
    m_downloadFile->close();
    if (m_downloadFile->error() != QFileDevice::NoError) {
        failDownload(u"Failed to write download file"_s);
        return;
    }
    if (isCutShort(*m_downloadReply, m_downloadFile->size())) {
        failDownload(u"Connection closed"_s);
        return;
    }
    if (m_downloadFile->size() == 0) {
        failDownload(u"The server sent an empty file"_s);
        return;
    }
    const std::optional<SignedUpdate> expected = m_expected;
    if (expected
        && (m_downloadFile->size() != expected->size
            || m_downloadHash.result() != expected->sha256)) {
        failDownload(mismatch());
        return;
    }

    // Reset before emitting: a slot may start the next download at once.
    std::exchange(m_downloadReply, nullptr)->deleteLater();
    const std::unique_ptr<QFile> file(std::exchange(m_downloadFile, nullptr));
    Q_EMIT downloadFinished();
    install(file->fileName(), expected);
}

void Updater::install(const QString &downloadPath, const std::optional<SignedUpdate> &expected)
{
    QFile script(temporaryPath(u"Vaskel_updater.bat"_s));
    const QByteArray text =
        platform::updateScript(downloadPath, QCoreApplication::applicationFilePath()).toUtf8();
    if (!create(script, QIODevice::WriteOnly | QIODevice::Text)) {
        Q_EMIT downloadError(u"Failed to create updater script"_s);
        return;
    }
    // A script that is cut off could do harm, so remove it.
    if (script.write(text) == -1 || !script.flush()) {
        script.close();
        QFile::remove(script.fileName());
        Q_EMIT downloadError(u"Failed to create updater script"_s);
        return;
    }
    script.close();
    // Check again: the slots of downloadFinished() may have taken long.
    if (expected && !hasContentOf(downloadPath, *expected)) {
        QFile::remove(script.fileName());
        QFile::remove(downloadPath);
        Q_EMIT downloadError(mismatch());
        return;
    }
    platform::startUpdateScript(script.fileName());
    QCoreApplication::quit();
}
