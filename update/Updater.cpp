// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/Updater.h"

#include "platform/PrivateFile.h"
#include "platform/UpdateScript.h"
#include "update/UpdateServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Limits the data that waits for the disk; a fast network could fill the memory.
constexpr qint64 downloadBufferSize = 256 * 1024;

QString temporaryPath(const QString &fileName)
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation)).filePath(fileName);
}

QUrl checkUrl()
{
    return QUrl(u"%1/api/v1/update/latest?platform=%2&arch=%3"_s.arg(
        updateServer(), QStringLiteral(UPDATE_PLATFORM), QStringLiteral(UPDATE_ARCHITECTURE)));
}

} // namespace

Updater::Updater(QObject *parent)
    : QObject(parent)
    , m_manager(new QNetworkAccessManager(this))
{
}

QString Updater::currentVersion() const
{
    return u"1.0.0"_s;
}

void Updater::checkForUpdate()
{
    QNetworkReply *reply = m_manager->get(QNetworkRequest(checkUrl()));
    connect(reply, &QNetworkReply::finished, this, [this, reply] { readAnswer(reply); });
}

void Updater::readAnswer(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError) {
        Q_EMIT checkError(reply->errorString());
        return;
    }
    const QJsonDocument document = QJsonDocument::fromJson(reply->readAll());
    if (!document.isObject()) {
        Q_EMIT checkError(u"Invalid response"_s);
        return;
    }
    const QJsonObject answer = document.object();
    if (!answer["has_update"_L1].toBool()) {
        Q_EMIT noUpdateAvailable();
        return;
    }
    m_downloadUrl = answer["download_url"_L1].toString();
    Q_EMIT updateAvailable(answer["version"_L1].toString(), answer["changelog"_L1].toString(),
                           m_downloadUrl, answer["mandatory"_L1].toBool());
}

void Updater::downloadAndInstall(const QString &url)
{
    abortDownload();
    m_downloadFile = new QFile(temporaryPath(u"Vaskel_update.exe"_s), this);
    if (!platform::openPrivateFile(*m_downloadFile, QIODevice::WriteOnly)) {
        Q_EMIT downloadError(u"Failed to create download file"_s);
        return;
    }

    QNetworkReply *reply = m_manager->get(QNetworkRequest(QUrl(url)));
    reply->setReadBufferSize(downloadBufferSize);
    connect(reply, &QNetworkReply::downloadProgress, this, &Updater::downloadProgress);
    connect(reply, &QNetworkReply::readyRead, this, &Updater::onDownloadReadyRead);
    // Ignore the end of an earlier, aborted download.
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        if (reply == m_downloadReply) {
            onDownloadFinished();
        } else {
            reply->deleteLater();
        }
    });
    m_downloadReply = reply;
}

void Updater::abortDownload()
{
    // abort() emits finished(), so clear the member first. Close the file so that the next download
    // can replace it on every system.
    if (QNetworkReply *reply = std::exchange(m_downloadReply, nullptr)) {
        reply->abort();
    }
    delete std::exchange(m_downloadFile, nullptr);
}

void Updater::onDownloadReadyRead()
{
    if (m_downloadReply && m_downloadFile) {
        m_downloadFile->write(m_downloadReply->readAll());
    }
}

void Updater::onDownloadFinished()
{
    if (!m_downloadReply || !m_downloadFile) {
        return;
    }
    // Reset before emitting: a slot may start the next download at once.
    QNetworkReply *reply = std::exchange(m_downloadReply, nullptr);
    QFile *file = std::exchange(m_downloadFile, nullptr);
    reply->deleteLater();
    file->deleteLater();

    if (reply->error() != QNetworkReply::NoError) {
        file->close();
        QFile::remove(file->fileName());
        Q_EMIT downloadError(reply->errorString());
        return;
    }
    file->write(reply->readAll());
    file->close();
    Q_EMIT downloadFinished();
    install(file->fileName());
}

void Updater::install(const QString &downloadPath)
{
    QFile script(temporaryPath(u"Vaskel_updater.bat"_s));
    if (!platform::openPrivateFile(script, QIODevice::WriteOnly | QIODevice::Text)) {
        Q_EMIT downloadError(u"Failed to create updater script"_s);
        return;
    }
    script.write(
        platform::updateScript(downloadPath, QCoreApplication::applicationFilePath()).toUtf8());
    script.close();
    platform::startUpdateScript(script.fileName());
    QCoreApplication::quit();
}
