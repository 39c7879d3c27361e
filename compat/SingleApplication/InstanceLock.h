// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>

/// The right to be a user's only instance of a program. The kernel takes it back when the process
/// ends, in whatever way, and started programs do not inherit it. It lies where only the user has
/// access, or bears the user's identity in its name.
class InstanceLock
{
public:
    enum class State {
        Held,          ///< by this object
        HeldElsewhere, ///< by another object, as a rule in another process
        Unavailable,   ///< the system offers nothing to hold
    };

    /// Programs, or uses of one, are told apart by userData. Takes nothing yet.
    explicit InstanceLock(const QString &userData);
    /// Gives the lock back.
    ~InstanceLock();
    Q_DISABLE_COPY_MOVE(InstanceLock)

    /// Takes the lock if it is free. Does not wait.
    State tryLock();

    /// Lets the lock's holder bring a window to the front in the place of this process, which the
    /// user has just started. Nothing where no system stands between.
    static void letHolderActivate();

    /// The name for the QLocalServer of the lock's holder.
    QString serverName() const { return m_serverName; }

private:
    QString m_lockPath;
    QString m_serverName;
    std::intptr_t m_handle = -1; ///< the open lock, as the system names it
};
