// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

class QFile;
class QNetworkAccessManager;
class QNetworkReply;

/// Asks the update server for a newer build, downloads it, and hands over to a script that puts it
/// in the place of the running executable. It shows nothing; the messages of its signals are plain
/// English or Qt's own words. All signals come from the event loop, but for a download file that
/// cannot be created.
class Updater : public QObject
{
    Q_OBJECT

public:
    explicit Updater(QObject *parent = nullptr);

    /// Asks the server once. Ends in updateAvailable(), noUpdateAvailable() or checkError(); in
    /// none of them as long as the server does not finish its answer.
    Q_INVOKABLE void checkForUpdate();

    /// Downloads the new executable into the folder for temporary files and installs it, which ends
    /// the process. A call during a download gives that one up for the new one.
    Q_INVOKABLE void downloadAndInstall(const QString &url);

    /// The version of this build, for display. The server decides alone whether there is a newer
    /// one.
    Q_INVOKABLE QString currentVersion() const;

Q_SIGNALS:
    /// The server offers this version. "url" is what downloadAndInstall() takes; it may be empty.
    void updateAvailable(const QString &version, const QString &changelog, const QString &url,
                         bool mandatory);
    /// The server has nothing newer.
    void noUpdateAvailable();
    /// The server was not reached, or its answer makes no sense.
    void checkError(const QString &message);
    /// In bytes; "bytesTotal" is -1 as long as the size is unknown.
    void downloadProgress(qint64 bytesReceived, qint64 bytesTotal);
    /// The file is complete and closed. The script comes next, and the end of the process with it.
    void downloadFinished();
    /// The download or the making of the script failed; the program runs on.
    void downloadError(const QString &message);

private Q_SLOTS:
    void onDownloadFinished();
    void onDownloadReadyRead();

private:
    void readAnswer(QNetworkReply *reply);
    void giveUpDownload();
    void install(const QString &downloadPath);

    QNetworkAccessManager *m_manager = nullptr;
    QNetworkReply *m_downloadReply = nullptr; // the running download, or null
    QFile *m_downloadFile = nullptr;
    QString m_downloadUrl; // what the server offered last
};
