// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

class QFile;
class QNetworkAccessManager;
class QNetworkReply;

/// Asks the update server for a newer build, downloads it, and starts a script that replaces the
/// running executable. Has no user interface; the messages of its signals are English or Qt's own.
/// All signals come from the event loop, except downloadError() for a file that cannot be created.
/// Nothing in the program calls the invokable functions by name, nor currentVersion() at all, or
/// connects noUpdateAvailable() and checkError().
class Updater : public QObject
{
    Q_OBJECT

public:
    explicit Updater(QObject *parent = nullptr);

    /// Asks the server once. Emits updateAvailable(), noUpdateAvailable() or checkError(), but
    /// nothing as long as the server does not finish its answer.
    Q_INVOKABLE void checkForUpdate();

    /// Downloads the new executable into the folder for temporary files, installs it and quits.
    /// Aborts a running download.
    Q_INVOKABLE void downloadAndInstall(const QString &url);

    /// The version of this build, for display. Only the server decides whether there is a newer
    /// one.
    Q_INVOKABLE QString currentVersion() const;

Q_SIGNALS:
    /// The server offers this version. "url" is for downloadAndInstall() and may be empty.
    void updateAvailable(const QString &version, const QString &changelog, const QString &url,
                         bool mandatory);
    /// The server has nothing newer.
    void noUpdateAvailable();
    /// The server cannot be reached, or its answer is invalid.
    void checkError(const QString &message);
    /// In bytes; "bytesTotal" is -1 while the size is unknown.
    void downloadProgress(qint64 bytesReceived, qint64 bytesTotal);
    /// The file is complete and closed. The update script and the end of the process follow.
    void downloadFinished();
    /// The download failed, or the script could not be created; the program runs on.
    void downloadError(const QString &message);

private Q_SLOTS:
    void onDownloadFinished();
    void onDownloadReadyRead();

private:
    void readAnswer(QNetworkReply *reply);
    void abortDownload();
    void install(const QString &downloadPath);

    QNetworkAccessManager *m_manager = nullptr;
    QNetworkReply *m_downloadReply = nullptr; // null while no download runs
    QFile *m_downloadFile = nullptr;
    QString m_downloadUrl; // from the server's last offer
};
