// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

class QDBusMessage;
class QDBusServiceWatcher;

namespace platform {

/// The desktop portal, over a connection of its own to the session bus. Nothing here waits for it.
class Portal : public QObject
{
    Q_OBJECT

public:
    using Replied = std::function<void(const QDBusMessage &reply)>;
    /// The error is empty if the request has succeeded.
    using Answered = std::function<void(const QString &error, const QVariantMap &results)>;

    struct Signal
    {
        QString interface;
        QString name;
    };

    explicit Portal(QObject *parent = nullptr);
    /// Ends the connection, and so all sessions.
    ~Portal() override;
    Q_DISABLE_COPY_MOVE(Portal)

    /// Call this before a session. Returns whether there is a session bus. From the session's start
    /// on, these signals of the portal are passed on as received().
    bool connectToBus(const QList<Signal> &signalsToReceive);

    /// Calls a method, and the function with the reply or the error, however long that takes; not
    /// after cancel(). The path is that of the portal by default.
    void call(const QString &interface, const QString &method, const QVariantList &arguments,
              const Replied &replied, const QString &path = {});

    /// Calls a method that a signal answers later, since the user may have to answer first. The
    /// options become its last argument. There is one such request at a time; a newer one or
    /// cancel() drops it without an answer.
    void request(const QString &interface, const QString &method, const QVariantList &arguments,
                 const QVariantMap &options, const Answered &answered);

    /// Forgets all calls and the request, and has the desktop close its dialog.
    void cancel();

    /// The path of the session that is created with this token.
    QString sessionPath(const QString &token) const;

    /// Empty if the reply is not an error.
    static QString errorOf(const QDBusMessage &reply);

Q_SIGNALS:
    void received(const QDBusMessage &signal);

    /// Another portal has started, perhaps by a call, or the portal has ended. Its sessions and
    /// requests end with it.
    void started();
    void ended();

private Q_SLOTS:
    // QDBusConnection::connect() takes slots by name.
    void handleResponse(const QDBusMessage &signal);
    void handleSignal(const QDBusMessage &signal);

private:
    void disconnectFromBus();
    void askForOwner();
    void handleOwner(const QString &older, const QString &newer);
    void subscribe(const QString &owner);
    void closeRequest();
    QString pathOf(const QString &kind, const QString &token) const;

    QDBusConnection m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    QList<Signal> m_signals;
    bool m_hasLostSessions = false;
    QString m_owner;      ///< the unique name of the portal
    int m_generation = 0; ///< of the calls; replies to those before cancel() are ignored
    QString m_request;    ///< its path
    Answered m_answered;
};

} // namespace platform
