// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/HttpServer.h"

#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pieceSize = 65536;

} // namespace

HttpServer::HttpServer(QObject *parent)
    : QObject(parent)
    , m_server(this)
{
    if (!m_server.listen(QHostAddress::LocalHost)) {
        qFatal("no server on the loopback interface");
    }
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection()) {
            serve(socket);
        }
    });
}

QString HttpServer::address() const
{
    return u"http://127.0.0.1:%1"_s.arg(m_server.serverPort());
}

void HttpServer::answer(const QString &path, const QByteArray &bytes, End end)
{
    m_answers.insert(path.toUtf8(), {bytes, 0, end});
}

void HttpServer::answerBody(const QString &path, const QByteArray &body)
{
    const QByteArray length = "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    answer(path, httpAnswer("200 OK", length, body));
}

void HttpServer::answerZeros(const QString &path, qint64 count)
{
    const QByteArray length = "Content-Length: " + QByteArray::number(count) + "\r\n";
    answerZeros(path, httpAnswer("200 OK", length, {}), count);
}

void HttpServer::answerZeros(const QString &path, const QByteArray &bytes, qint64 count)
{
    m_answers.insert(path.toUtf8(), {bytes, count});
}

void HttpServer::answerSlowly(const QString &path, const QByteArray &head, const QByteArray &body,
                              std::chrono::milliseconds pause)
{
    m_answers.insert(path.toUtf8(), {head, 0, End::Hang, body, pause});
}

void HttpServer::serve(QTcpSocket *socket)
{
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, this,
            [this, socket, request = QByteArray()]() mutable { readRequest(socket, request); });
}

void HttpServer::readRequest(QTcpSocket *socket, QByteArray &request)
{
    request += socket->readAll();
    if (!request.contains("\r\n\r\n")) {
        return;
    }
    requests.append(std::exchange(request, {}));
    const QByteArray path = requests.constLast().split(' ').value(1);
    const auto found = m_answers.constFind(path);
    if (found == m_answers.cend()) {
        send(socket, {httpAnswer("404 Not Found", "Content-Length: 0\r\n", {})});
    } else {
        send(socket, *found);
    }
}

void HttpServer::send(QTcpSocket *socket, const Answer &answer)
{
    socket->write(answer.bytes);
    if (!answer.slowBody.isEmpty()) {
        sendSlowly(socket, answer.slowBody, answer.pause);
    } else if (answer.zeros > 0) {
        sendZeros(socket, answer.zeros);
    } else if (answer.end == End::Close) {
        socket->disconnectFromHost();
    }
}

void HttpServer::sendZeros(QTcpSocket *socket, qint64 count)
{
    const auto sendPiece = [socket, rest = count]() mutable {
        if (socket->bytesToWrite() < pieceSize) {
            rest -= socket->write(QByteArray(std::min(rest, pieceSize), '\0'));
        }
        if (rest == 0) {
            socket->disconnectFromHost();
        }
    };
    connect(socket, &QTcpSocket::bytesWritten, this, sendPiece);
}

void HttpServer::sendSlowly(QTcpSocket *socket, const QByteArray &body,
                            std::chrono::milliseconds pause)
{
    auto *timer = new QTimer(socket);
    timer->callOnTimeout(socket, [socket, timer, rest = body]() mutable {
        if (rest.isEmpty()) {
            timer->stop();
            return;
        }
        socket->write(rest.left(1));
        rest.remove(0, 1);
    });
    timer->start(pause);
}

QByteArray httpAnswer(const QByteArray &status, const QByteArray &headers, const QByteArray &body)
{
    return "HTTP/1.1 " + status + "\r\n" + headers + "Connection: close\r\n\r\n" + body;
}
