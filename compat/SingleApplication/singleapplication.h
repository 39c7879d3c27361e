// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

#include <memory>

class InstanceLock;
class QLocalServer;

/// An application of which a user runs a single instance, the primary one. The executable's path
/// and version play no part: copies of a program count as one.
class SingleApplication : public QApplication
{
    Q_OBJECT

public:
    enum Mode {
        User = 1 << 0, ///< each user of the machine has an instance of their own
    };
    Q_DECLARE_FLAGS(Options, Mode)

    /// Becomes the primary instance if the user has none with this userData. Otherwise tells that
    /// one and ends the process with status 0, or, where secondary instances are allowed, carries
    /// on as one of them. A primary instance that does not answer is given the timeout, in
    /// milliseconds, before the process ends untold. Without any place to keep track of instances
    /// each is a primary one.
    explicit SingleApplication(int &argc, char *argv[], bool allowSecondary = false,
                               Options options = Mode::User, int timeout = 1000,
                               const QString &userData = {});
    ~SingleApplication() override;

    bool isPrimary() const;
    bool isSecondary() const;

Q_SIGNALS:
    /// The program was started once more, and that process has ended or is about to. Emitted by
    /// the primary instance from its event loop, once for each such start, also for those that
    /// came before the loop ran.
    void instanceStarted();

private:
    void listen();

    // In this order: the next primary instance listens under the same name once it has the lock.
    std::unique_ptr<InstanceLock> m_lock;
    std::unique_ptr<QLocalServer> m_server;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(SingleApplication::Options)
