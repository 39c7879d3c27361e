// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

#include <memory>

class InstanceLock;
class QLocalServer;
class QLocalSocket;

/// An application with one primary instance for each user. The executable's path and version do not
/// matter: copies of a program count as one.
class SingleApplication : public QApplication
{
    Q_OBJECT

public:
    enum Mode {
        User = 1 << 0, ///< one primary instance for each user of the machine
    };
    Q_DECLARE_FLAGS(Options, Mode)

    /// Becomes the primary instance if the user has none with this userData. Otherwise notifies
    /// that instance and ends the process with status 0, or carries on as a secondary instance if
    /// allowed. Waits at most "timeout" milliseconds for a primary instance that does not answer,
    /// then ends the process as well. Without a place for the lock, every instance is primary.
    explicit SingleApplication(int &argc, char *argv[], bool allowSecondary = false,
                               Options options = Mode::User, int timeout = 1000,
                               const QString &userData = {});
    ~SingleApplication() override;

    bool isPrimary() const;
    bool isSecondary() const;

    /// Sends a message from a secondary instance to the primary one, which ignores one of more than
    /// 4096 bytes. Returns false from the primary instance, for an empty message, or if no instance
    /// of this user takes it within "timeout" milliseconds.
    bool sendMessage(const QByteArray &message, int timeout = 100);

Q_SIGNALS:
    /// The user started the program again; that process has ended or is about to. The primary
    /// instance emits it from the event loop, once for each start, including starts before the loop
    /// ran.
    void instanceStarted();

    /// A process of the same user has sent this message. Emitted from the event loop. The number,
    /// by which the library tells secondary instances apart, is always 0.
    void receivedMessage(quint32 instanceId, QByteArray message);

private:
    void listen();
    void receive(QLocalSocket *socket);
    void takeMessage(const QByteArray &message);

    // Destroyed in reverse: the next primary instance listens under the same name once it has the
    // lock.
    std::unique_ptr<InstanceLock> m_lock;
    std::unique_ptr<QLocalServer> m_server;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(SingleApplication::Options)
