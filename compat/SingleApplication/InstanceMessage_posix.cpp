// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceMessage.h"

#include "StoppedProcess.h"

#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <chrono>
#include <cstring>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// A full queue of connections, or of bytes, makes the calls wait.
void limitWaiting(int socket, const QDeadlineTimer &deadline)
{
    using namespace std::chrono;
    const auto rest = std::max(duration_cast<microseconds>(deadline.remainingTimeAsDuration()),
                               microseconds(1)); // zero would mean no limit
    const timeval limit{.tv_sec = rest.count() / 1'000'000,
                        .tv_usec = suseconds_t(rest.count() % 1'000'000)};
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
}

} // namespace

bool sendInstanceMessage(const QString &serverName, const QByteArray &message,
                         const QDeadlineTimer &deadline)
{
    const QByteArray path = QFile::encodeName(serverName);
    sockaddr_un address{};
    if (path.size() >= qsizetype(sizeof address.sun_path)) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));

    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connection == -1) {
        return false;
    }
    const auto closing = qScopeGuard([connection] { close(connection); });
    limitWaiting(connection, deadline);
    if (connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || !isConnectionOfUser(connection)
        || send(connection, message.constData(), size_t(message.size()), MSG_NOSIGNAL)
               != message.size()) {
        return false;
    }
    warnIfStopped(connection);
    return true;
}

bool isConnectionOfUser(qintptr socketDescriptor)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(int(socketDescriptor), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
           && peer.uid == geteuid();
}
