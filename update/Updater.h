// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "update/SignedUpdate.h"

#include <QCryptographicHash>
#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

class QFile;
class QNetworkAccessManager;
class QNetworkReply;
class QUrl;

/// Asks the update server for a newer build, downloads it, and starts a script that replaces the
/// running executable. Has no user interface; the messages of its signals are English or Qt's own.
/// All signals come from the event loop, except a downloadError() that downloadAndInstall() emits
/// itself: for a refused address, without a signed offer, or if the file cannot be created.
///
/// Only http and https addresses are contacted, no server is told who the user is, and a server
/// that is silent for 30 seconds counts as failed. So does one that takes more than five minutes
/// for its answer, or four hours for a file.
///
/// If updateKeys() has a key, an offer counts only with a signature by it for this platform and a
/// version above currentVersion(). Only https addresses are contacted then, except for this
/// machine's own. The download ends where it gets longer than the signed size; the closed file must
/// have the signed hash before downloadFinished(), and once more right before the script starts.
/// No other user can replace the file before the script copies it: platform::openPrivateFile()
/// makes it accessible to the user alone, in a folder where no other user can rename or remove it.
/// The user's own programs could, but they could as well replace the program itself.
///
/// Nothing in the program calls the invokable functions by name, sets other timeouts, or connects
/// noUpdateAvailable() and checkError(). Only this class calls currentVersion().
class Updater : public QObject
{
    Q_OBJECT

public:
    explicit Updater(QObject *parent = nullptr);

    /// How long a server may be silent, for requests from now on.
    void setTransferTimeout(std::chrono::milliseconds timeout);

    /// How long a check and a download may take in all, for requests from now on.
    void setTotalTimeouts(std::chrono::milliseconds check, std::chrono::milliseconds download);

    /// Asks the server once. Later emits updateAvailable(), noUpdateAvailable() or checkError(),
    /// once; nothing if there is no server. An answer may have up to 1 MiB.
    Q_INVOKABLE void checkForUpdate();

    /// Downloads the new executable into the folder for temporary files, installs it and quits.
    /// Aborts a running download. With a key, the file must be that of the last offer.
    Q_INVOKABLE void downloadAndInstall(const QString &url);

    /// The version of this build, with which a signed offer is compared. Without a key, only the
    /// server decides whether there is a newer one.
    Q_INVOKABLE QString currentVersion() const;

Q_SIGNALS:
    /// The server offers this version. "url" is for downloadAndInstall() and may be empty.
    void updateAvailable(const QString &version, const QString &changelog, const QString &url,
                         bool mandatory);
    /// The server has nothing newer, or nothing that is signed as it must be; the log tells.
    void noUpdateAvailable();
    /// The server cannot be reached, or its answer is invalid.
    void checkError(const QString &message);
    /// In bytes; "bytesTotal" is -1 while the size is unknown.
    void downloadProgress(qint64 bytesReceived, qint64 bytesTotal);
    /// The file is complete and closed. The update script and the end of the process follow.
    void downloadFinished();
    /// The address is refused, there is no signed offer, the download failed, is empty or not the
    /// signed one, or a file could not be written; the program runs on.
    void downloadError(const QString &message);

private Q_SLOTS:
    void onDownloadFinished();
    void onDownloadReadyRead();

private:
    QNetworkReply *get(const QUrl &url, std::chrono::milliseconds total);
    template <typename Next, typename Fail>
    void followRedirect(QNetworkReply *reply, int redirectsLeft, Next next, Fail fail);
    void check(const QUrl &url, int redirectsLeft);
    void readAnswer(QNetworkReply *reply);
    void download(const QUrl &url, int redirectsLeft);
    void abortDownload();
    void failDownload(const QString &message);
    bool writeDownload(); // false if it failed and reported that
    void install(const QString &downloadPath, const std::optional<SignedUpdate> &expected);

    QNetworkAccessManager *m_manager = nullptr;
    std::chrono::milliseconds m_transferTimeout = std::chrono::seconds(30);
    std::chrono::milliseconds m_checkTimeout = std::chrono::minutes(5);
    std::chrono::milliseconds m_downloadTimeout = std::chrono::hours(4);
    QNetworkReply *m_downloadReply = nullptr; // null while no download runs
    QFile *m_downloadFile = nullptr;
    QString m_downloadUrl; // from the server's last offer
    // Without a key, there is neither.
    std::optional<SignedUpdate> m_offer;    // the server's last one
    std::optional<SignedUpdate> m_expected; // of the last download
    QCryptographicHash m_downloadHash{QCryptographicHash::Sha256};
};
