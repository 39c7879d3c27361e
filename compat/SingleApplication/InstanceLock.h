// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDeadlineTimer>
#include <QString>

#include <cstdint>

/// Locks a name so that a user runs one instance of a program. The kernel releases the lock when
/// the process ends for any reason; started programs do not inherit it. Its file is in a folder
/// that only the user can access, or its name contains the user's identity.
class InstanceLock
{
public:
    enum class State {
        Held,          ///< by this object
        HeldElsewhere, ///< by another object, usually in another process
        Unavailable,   ///< the system cannot create the lock
    };

    /// userData distinguishes programs, or uses of one program. Does not lock yet.
    explicit InstanceLock(const QString &userData);
    /// Releases the lock.
    ~InstanceLock();
    Q_DISABLE_COPY_MOVE(InstanceLock)

    /// Takes the lock if it is free. Does not wait.
    State tryLock();

    enum class Notice {
        Given,        ///< the holder of the lock has it
        NotListening, ///< the holder of the lock does not listen yet, or no longer
        Stolen,       ///< another user listens under its name
    };

    /// Connects to the holder of the lock; the connection itself is the notice. If the holder is
    /// too busy to accept it, waits until the deadline; on Windows never waits. Allows the holder
    /// to activate a window in place of this process, which the user has just started.
    Notice notifyHolder(const QDeadlineTimer &deadline) const;

    /// The QLocalServer name for the holder of the lock.
    QString serverName() const { return m_serverName; }

private:
    QString m_lockPath;
    QString m_serverName;
    std::intptr_t m_handle = -1; ///< file descriptor or handle of the lock; -1 if not held
};
