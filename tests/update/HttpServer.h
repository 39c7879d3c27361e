// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTcpServer>

#include <chrono>

class QTcpSocket;

/// A server on the loopback interface that sends the given bytes.
class HttpServer : public QObject
{
    Q_OBJECT

public:
    enum class End {
        Close, ///< close the connection after the answer
        Hang,  ///< keep the connection open and send nothing more
    };

    /// Starts to listen.
    explicit HttpServer(QObject *parent = nullptr);

    /// The server's address, without a trailing slash.
    QString address() const;
    QString url(const QString &path) const { return address() + path; }

    /// Sets the answer to all requests for this path, with status line and headers. Other requests
    /// get 404.
    void answer(const QString &path, const QByteArray &bytes, End end = End::Close);
    /// Sets an answer with usual headers.
    void answerBody(const QString &path, const QByteArray &body);
    /// Sets an answer of this many zeros, generated as fast as the client receives them.
    void answerZeros(const QString &path, qint64 count);
    /// Sets an answer that begins with these bytes and goes on with zeros.
    void answerZeros(const QString &path, const QByteArray &bytes, qint64 count);
    /// Sets an answer whose body comes byte by byte, with a pause before each.
    void answerSlowly(const QString &path, const QByteArray &head, const QByteArray &body,
                      std::chrono::milliseconds pause);

    /// All requests so far, with their headers.
    QByteArrayList requests;

private:
    struct Answer
    {
        QByteArray bytes;
        qint64 zeros = 0;
        End end = End::Close;
        QByteArray slowBody = {};
        std::chrono::milliseconds pause = std::chrono::milliseconds(0);
    };

    void serve(QTcpSocket *socket);
    void readRequest(QTcpSocket *socket, QByteArray &request);
    void send(QTcpSocket *socket, const Answer &answer);
    void sendZeros(QTcpSocket *socket, qint64 count);
    void sendSlowly(QTcpSocket *socket, const QByteArray &body, std::chrono::milliseconds pause);

    QTcpServer m_server;
    QHash<QByteArray, Answer> m_answers; // by path and query
};

/// Builds an answer; each header ends with a line break.
QByteArray httpAnswer(const QByteArray &status, const QByteArray &headers, const QByteArray &body);
