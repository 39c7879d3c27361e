// SPDX-License-Identifier: GPL-3.0-or-later
#include "singleapplication.h"

#include "InstanceLock.h"
#include "InstanceMessage.h"

#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <thread>

using namespace std::chrono_literals;

namespace {

// Between two attempts while the primary instance is starting or ending.
constexpr auto retryInterval = 10ms;

// How long another process may keep its connection open.
constexpr auto longestConnection = 5s;

} // namespace

SingleApplication::SingleApplication(int &argc, char *argv[], bool allowSecondary, Options,
                                     int timeout, const QString &userData)
    : QApplication(argc, argv)
    , m_lock(std::make_unique<InstanceLock>(userData))
{
    const QDeadlineTimer deadline(timeout);
    // The holder of the lock may not listen yet, or no longer; then it soon listens or releases the
    // lock.
    InstanceLock::State state = m_lock->tryLock();
    for (; state == InstanceLock::State::HeldElsewhere; state = m_lock->tryLock()) {
        if (allowSecondary) {
            return;
        }
        const InstanceLock::Notice notice = m_lock->notifyHolder(deadline);
        if (notice == InstanceLock::Notice::Stolen) {
            qWarning("SingleApplication: another user listens in place of the running instance");
        }
        if (notice != InstanceLock::Notice::NotListening || deadline.hasExpired()) {
            // Nothing needs a cleanup yet, and the destructors could only change the exit status.
            std::_Exit(EXIT_SUCCESS);
        }
        std::this_thread::sleep_for(retryInterval);
    }
    if (state == InstanceLock::State::Unavailable) {
        qWarning("SingleApplication: cannot lock, so every start is an instance of its own");
    }
    listen();
}

SingleApplication::~SingleApplication() = default;

bool SingleApplication::isPrimary() const
{
    return m_server != nullptr;
}

bool SingleApplication::isSecondary() const
{
    return !isPrimary();
}

bool SingleApplication::sendMessage(const QByteArray &message, int timeout)
{
    return isSecondary() && !message.isEmpty()
           && sendInstanceMessage(m_lock->serverName(), message, QDeadlineTimer(timeout));
}

void SingleApplication::listen()
{
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    // Queued, since on Windows listen() itself may accept a connection before anyone could connect
    // to our signal.
    connect(
        m_server.get(), &QLocalServer::newConnection, this,
        [this] {
            while (QLocalSocket *socket = m_server->nextPendingConnection()) {
                receive(socket);
            }
        },
        Qt::QueuedConnection);
    // The socket file of a killed instance would block listen().
    QLocalServer::removeServer(m_lock->serverName());
    if (!m_server->listen(m_lock->serverName())) {
        qWarning("SingleApplication: cannot listen for further instances: %ls",
                 qUtf16Printable(m_server->errorString()));
    }
}

// The end of the connection is the end of the message.
void SingleApplication::receive(QLocalSocket *socket)
{
    if (!isConnectionOfUser(socket->socketDescriptor())) {
        qWarning("SingleApplication: ignored a process of another user");
        socket->deleteLater();
        return;
    }
    const auto end = [this, socket] {
        socket->disconnect(this);
        socket->deleteLater();
        takeMessage(socket->readAll());
    };
    connect(socket, &QLocalSocket::readyRead, this, [socket, end] {
        if (socket->bytesAvailable() > maximumInstanceMessageSize) {
            end();
        }
    });
    connect(socket, &QLocalSocket::disconnected, this, end);
    QTimer::singleShot(longestConnection, socket, &QLocalSocket::abort);
    if (socket->state() == QLocalSocket::UnconnectedState) {
        end();
    }
}

void SingleApplication::takeMessage(const QByteArray &message)
{
    if (message.isEmpty()) {
        Q_EMIT instanceStarted();
    } else if (message.size() > maximumInstanceMessageSize) {
        qWarning("SingleApplication: ignored a message that is too long");
    } else {
        Q_EMIT receivedMessage(0, message);
    }
}
