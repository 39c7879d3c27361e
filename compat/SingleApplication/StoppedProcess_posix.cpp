// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoppedProcess.h"

#include <QFile>

#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace {

bool isStopped(pid_t process)
{
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    // The state follows the name of the program, which is in parentheses and may contain some.
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 1).trimmed().startsWith('T');
}

} // namespace

void warnIfStopped(qintptr socketDescriptor)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(int(socketDescriptor), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && isStopped(peer.pid)) {
        qWarning("SingleApplication: the running instance is stopped, and answers when it "
                 "continues");
    }
}
