// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceLock.h"

#include "StoppedProcess.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QStandardPaths>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Qt returns a runtime folder only if it belongs to this user and is closed to others.
QString privateFolder()
{
    QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtime.isEmpty()) {
        return runtime;
    }
    QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    QDir().mkpath(cache);
    return cache;
}

QString fileName(const QString &userData)
{
    const QByteArray identity = QByteArray::number(getuid()) + '\0' + userData.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(identity, QCryptographicHash::Sha256).toHex();
    return "SingleApplication-"_L1 + QLatin1StringView(hash.first(16));
}

} // namespace

InstanceLock::InstanceLock(const QString &userData)
{
    const QString base = privateFolder() + u'/' + fileName(userData);
    m_lockPath = base + ".lock"_L1;
    m_serverName = base + ".socket"_L1;
}

InstanceLock::~InstanceLock()
{
    // Do not delete the file: another process may have opened it and would then lock a file that a
    // third process no longer finds.
    if (m_handle != -1) {
        close(int(m_handle));
    }
}

InstanceLock::State InstanceLock::tryLock()
{
    if (m_handle != -1) {
        return State::Held;
    }
    const int file = open(QFile::encodeName(m_lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC,
                          S_IRUSR | S_IWUSR);
    if (file == -1) {
        return State::Unavailable;
    }
    if (flock(file, LOCK_EX | LOCK_NB) == -1) {
        const State state = errno == EWOULDBLOCK ? State::HeldElsewhere : State::Unavailable;
        close(file);
        return state;
    }
    // The sticky bit keeps systemd from removing unused files of a runtime folder.
    fchmod(file, S_IRUSR | S_IWUSR | S_ISVTX);
    m_handle = file;
    return State::Held;
}

// Nobody else can make a socket in that folder.
InstanceLock::Notice InstanceLock::notifyHolder(const QDeadlineTimer &deadline) const
{
    QLocalSocket socket;
    socket.connectToServer(m_serverName);
    if (!socket.waitForConnected(int(deadline.remainingTime()))) {
        return Notice::NotListening;
    }
    warnIfStopped(socket.socketDescriptor());
    return Notice::Given;
}
