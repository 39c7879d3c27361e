// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Portal.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop"_L1;
constexpr auto portalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto requestInterface = "org.freedesktop.portal.Request"_L1;

// Each object has its own connection. The portal must know the name of the program before the first
// other call on a connection, and Qt calls the portal on its own connection, too.
QString newConnectionName()
{
    static int count = 0;
    return u"Vaskel portal %1"_s.arg(++count);
}

} // namespace

Portal::Portal(QObject *parent)
    : QObject(parent)
    , m_bus(newConnectionName())
{
}

Portal::~Portal()
{
    disconnectFromBus();
}

bool Portal::connectToBus(const QList<Signal> &signalsToReceive)
{
    // After the portal has ended, the desktop may keep its sessions. A new connection gives the
    // next session another path.
    if (m_bus.isConnected() && !m_hasLostSessions) {
        return true;
    }
    disconnectFromBus();
    m_hasLostSessions = false;
    m_owner.clear();
    m_signals = signalsToReceive;
    m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, newConnectionName());
    m_watcher = std::make_unique<QDBusServiceWatcher>(service, m_bus,
                                                      QDBusServiceWatcher::WatchForOwnerChange);
    connect(
        m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &older, const QString &newer) {
            handleOwner(older, newer);
        },
        Qt::QueuedConnection); // a receiver may reconnect, which deletes the emitting watcher
    askForOwner();
    return m_bus.isConnected();
}

void Portal::disconnectFromBus()
{
    m_watcher.reset();
    if (m_bus.isConnected()) {
        QDBusConnection::disconnectFromBus(m_bus.name());
    }
}

// Asks the bus for the portal's unique name. It replies before the portal replies to any later
// call. If the portal does not run, handleOwner() learns the name when a call starts it.
void Portal::askForOwner()
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    message.setArguments({QString(service)});
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (reply.type() == QDBusMessage::ReplyMessage) {
            subscribe(reply.arguments().value(0).toString());
        }
    });
}

void Portal::call(const QString &interface, const QString &method, const QVariantList &arguments,
                  const Replied &replied, const QString &path)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, path.isEmpty() ? QString(portalPath) : path, interface, method);
    message.setArguments(arguments);
    constexpr int never = std::numeric_limits<int>::max();
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, never), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, replied, generation = m_generation] {
                watcher->deleteLater();
                if (generation == m_generation) {
                    replied(watcher->reply());
                }
            });
}

// The signal may come before the reply, so the path of the request is chosen before the call.
void Portal::request(const QString &interface, const QString &method, const QVariantList &arguments,
                     const QVariantMap &options, const Answered &answered)
{
    static int count = 0;
    const QString token = u"vaskel%1"_s.arg(++count);
    m_request = pathOf(u"request"_s, token);
    m_answered = answered;
    QVariantMap allOptions = options;
    allOptions.insert(u"handle_token"_s, token);
    call(interface, method, arguments + QVariantList{allOptions},
         [this, path = m_request](const QDBusMessage &reply) {
             const QString error = errorOf(reply);
             if (m_request == path && !error.isEmpty()) { // not answered by the signal yet
                 m_request.clear();
                 std::exchange(m_answered, {})(error, {});
             }
         });
}

void Portal::cancel()
{
    ++m_generation;
    closeRequest();
}

QString Portal::sessionPath(const QString &token) const
{
    return pathOf(u"session"_s, token);
}

QString Portal::errorOf(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ErrorMessage
               ? reply.errorName() + ": "_L1 + reply.errorMessage()
               : QString();
}

void Portal::handleResponse(const QDBusMessage &signal)
{
    if (m_request.isEmpty() || signal.path() != m_request) {
        return;
    }
    m_request.clear();
    const QVariantList arguments = signal.arguments();
    const uint response = arguments.value(0).toUInt();
    const QString error = response == 0 ? QString() : u"the answer is %1"_s.arg(response);
    // The function may make the next request.
    std::exchange(m_answered, {})(error, qdbus_cast<QVariantMap>(arguments.value(1)));
}

void Portal::handleSignal(const QDBusMessage &signal)
{
    Q_EMIT received(signal);
}

void Portal::handleOwner(const QString &older, const QString &newer)
{
    if (!newer.isEmpty() && newer == m_owner) {
        return; // the bus has named it already
    }
    if (!older.isEmpty()) {
        m_request.clear(); // it has gone
        m_hasLostSessions = m_hasLostSessions || !m_owner.isEmpty();
        Q_EMIT ended();
    }
    if (!newer.isEmpty()) {
        subscribe(newer);
        Q_EMIT started();
    }
}

// Subscribes by the unique name: Qt would block to look up the owner of the well-known one.
void Portal::subscribe(const QString &owner)
{
    if (owner == m_owner) {
        return;
    }
    const QString older = std::exchange(m_owner, owner);
    const QString anyPath;
    const auto subscribeTo = [&](const QString &interface, const QString &name, const char *slot) {
        if (!older.isEmpty()) {
            m_bus.disconnect(older, anyPath, interface, name, this, slot);
        }
        m_bus.connect(owner, anyPath, interface, name, this, slot);
    };
    subscribeTo(requestInterface, u"Response"_s, SLOT(handleResponse(QDBusMessage)));
    for (const Signal &signal : std::as_const(m_signals)) {
        subscribeTo(signal.interface, signal.name, SLOT(handleSignal(QDBusMessage)));
    }
}

void Portal::closeRequest()
{
    if (!m_request.isEmpty()) {
        m_bus.send(
            QDBusMessage::createMethodCall(service, m_request, requestInterface, u"Close"_s));
        m_request.clear();
    }
}

QString Portal::pathOf(const QString &kind, const QString &token) const
{
    const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    return portalPath + u'/' + kind + u'/' + sender + u'/' + token;
}

} // namespace platform
