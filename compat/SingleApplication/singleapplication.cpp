// SPDX-License-Identifier: GPL-3.0-or-later
#include "singleapplication.h"

#include "InstanceLock.h"

#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>

#include <chrono>
#include <cstdlib>
#include <thread>

using namespace std::chrono_literals;

namespace {

// How long a starting or ending primary instance is left alone before it is tried again.
constexpr auto retryInterval = 10ms;

// To connect is all that there is to tell.
bool tellPrimary(const QString &serverName, const QDeadlineTimer &deadline)
{
    InstanceLock::letHolderActivate();
    QLocalSocket socket;
    socket.connectToServer(serverName);
    return socket.waitForConnected(int(deadline.remainingTime()));
}

} // namespace

SingleApplication::SingleApplication(int &argc, char *argv[], bool allowSecondary, Options,
                                     int timeout, const QString &userData)
    : QApplication(argc, argv)
    , m_lock(std::make_unique<InstanceLock>(userData))
{
    const QDeadlineTimer deadline(timeout);
    // The holder of the lock may not listen yet or not any more, and then either listens soon or
    // leaves the lock to us.
    while (m_lock->tryLock() == InstanceLock::State::HeldElsewhere) {
        if (allowSecondary) {
            return;
        }
        if (tellPrimary(m_lock->serverName(), deadline) || deadline.hasExpired()) {
            // Nothing has happened in this process that would need the toolkit to be torn down, and
            // tearing it down from inside its constructor could only spoil the status.
            std::_Exit(EXIT_SUCCESS);
        }
        std::this_thread::sleep_for(retryInterval);
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

void SingleApplication::listen()
{
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    // On Windows listen() itself may find a connection, when nobody has been able to ask for our
    // signal yet.
    connect(
        m_server.get(), &QLocalServer::newConnection, this,
        [this] {
            while (QLocalSocket *socket = m_server->nextPendingConnection()) {
                socket->deleteLater();
                Q_EMIT instanceStarted();
            }
        },
        Qt::QueuedConnection);
    // What an instance that was killed left behind would be in the way.
    QLocalServer::removeServer(m_lock->serverName());
    if (!m_server->listen(m_lock->serverName())) {
        qWarning("SingleApplication: cannot listen for further instances: %ls",
                 qUtf16Printable(m_server->errorString()));
    }
}
