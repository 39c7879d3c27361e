// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTcpServer>

class QTcpSocket;

/// A server on the loopback interface that sends, byte for byte, what a test has it answer.
class HttpServer : public QObject
{
    Q_OBJECT

public:
    enum class End {
        Close, ///< the connection is closed behind the answer
        Hang,  ///< the connection stays open and nothing more comes
    };

    /// Listens at once.
    explicit HttpServer(QObject *parent = nullptr);

    /// Its address without a trailing slash.
    QString address() const;
    QString url(const QString &path) const { return address() + path; }

    /// The answer to all requests for this path, status line and headers included. All other
    /// requests are answered by 404.
    void answer(const QString &path, const QByteArray &bytes, End end = End::Close);
    /// The same with the headers of a common answer.
    void answerBody(const QString &path, const QByteArray &body);
    /// So many zeros, made as they are sent, at the pace of the receiver.
    void answerZeros(const QString &path, qint64 count);

    /// The requests so far, each with its headers.
    QByteArrayList requests;

private:
    struct Answer
    {
        QByteArray bytes;
        qint64 zeros = 0;
        End end = End::Close;
    };

    void serve(QTcpSocket *socket);
    void readRequest(QTcpSocket *socket, QByteArray &request);
    void send(QTcpSocket *socket, const Answer &answer);

    QTcpServer m_server;
    QHash<QByteArray, Answer> m_answers; // by path and query
};

/// An answer with these headers, each ended by a line break, and this body.
QByteArray httpAnswer(const QByteArray &status, const QByteArray &headers, const QByteArray &body);
