// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PortalHotkeys.h"

#include "platform/linux/PortalShortcut.h"
#include "platform/linux/PortalTrigger.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDebug>
#include <QGuiApplication>
#include <QKeySequence>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr auto shortcutsInterface = "org.freedesktop.portal.GlobalShortcuts"_L1;
constexpr auto sessionInterface = "org.freedesktop.portal.Session"_L1;

// The name of the desktop file. KDE also names the group of hotkeys after the session's token, so
// that must not change either.
constexpr auto programId = "vaskel"_L1;

// A session that the portal closes is opened again, but not for ever.
constexpr int mostClosures = 3;

QString triggerOf(const DesktopHotkeys::Hotkey &hotkey)
{
    return portalTrigger(QKeySequence(hotkey.sequence, QKeySequence::PortableText));
}

// Desktops remember the keys of an id, whatever keys they are asked for later. So a hotkey with
// other keys has another id, except the default one: users of Hyprland write its id into a file.
QString idOf(const DesktopHotkeys::Hotkey &hotkey)
{
    constexpr auto defaultTrigger = "CTRL+ALT+space"_L1;
    const QString trigger = triggerOf(hotkey);
    if (hotkey.command.isEmpty()) {
        return trigger == defaultTrigger ? u"toggle"_s : u"toggle-"_s + trigger;
    }
    return "command-"_L1 + hotkey.command + u'-' + trigger;
}

} // namespace

PortalHotkeys::PortalHotkeys(QWindow *window, std::chrono::milliseconds timeout)
    : m_window(window)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(timeout);
    connect(&m_timer, &QTimer::timeout, this, &PortalHotkeys::handleTimeout);
    connect(&m_portal, &Portal::started, this, &PortalHotkeys::handleStarted);
    connect(&m_portal, &Portal::ended, this, &PortalHotkeys::handleEnded);
    connect(&m_portal, &Portal::received, this, &PortalHotkeys::handleSignal);
}

void PortalHotkeys::bind(const QList<Hotkey> &hotkeys)
{
    if (hotkeys != m_hotkeys) {
        m_hotkeys = hotkeys;
        m_closures = 0;
        begin();
    }
}

std::optional<QString> PortalHotkeys::trigger(const QString &command) const
{
    const auto found = m_triggers.constFind(command);
    return m_isBound && found != m_triggers.cend() ? std::optional(*found) : std::nullopt;
}

bool PortalHotkeys::canConfigure() const
{
    return m_isBound && m_version >= 2;
}

void PortalHotkeys::configure()
{
    if (canConfigure()) {
        m_portal.call(shortcutsInterface, u"ConfigureShortcuts"_s,
                      {session(), parentWindow(), QVariantMap()}, [](const QDBusMessage &reply) {
                          if (const QString error = Portal::errorOf(reply); !error.isEmpty()) {
                              qWarning() << "The desktop does not show its hotkeys:" << error;
                          }
                      });
    }
}

void PortalHotkeys::begin()
{
    const QString older = m_session;
    end();
    if (m_hotkeys.isEmpty() && older.isEmpty()) {
        setBound(false);
        return;
    }
    if (!m_portal.connectToBus({{shortcutsInterface, u"Activated"_s},
                                {shortcutsInterface, u"Deactivated"_s},
                                {shortcutsInterface, u"ShortcutsChanged"_s},
                                {sessionInterface, u"Closed"_s}})) {
        fail(u"there is no session bus"_s);
        return;
    }
    m_timer.start();
    if (older.isEmpty()) {
        registerProgram();
    } else {
        // The next session has the same path, so close the older one first.
        m_portal.call(
            sessionInterface, u"Close"_s, {}, [this](const QDBusMessage &) { registerProgram(); },
            older);
    }
}

void PortalHotkeys::end()
{
    m_portal.cancel();
    m_timer.stop();
    m_session.clear();
    m_heldKeys.releaseAll();
}

void PortalHotkeys::fail(const QString &reason)
{
    qWarning() << "The desktop does not hold the hotkeys:" << reason;
    const QString session = m_session;
    end();
    if (!session.isEmpty()) {
        m_portal.call(
            sessionInterface, u"Close"_s, {}, [](const QDBusMessage &) {}, session);
    }
    setBound(false);
}

void PortalHotkeys::setBound(bool isBound)
{
    if (isBound || m_isBound) {
        m_isBound = isBound;
        Q_EMIT changed();
    }
}

// Ignores an error: an older portal lacks this interface and needs no registration.
void PortalHotkeys::registerProgram()
{
    if (m_hotkeys.isEmpty()) {
        end();
        setBound(false);
        return;
    }
    m_portal.call(u"org.freedesktop.host.portal.Registry"_s, u"Register"_s,
                  {QString(programId), QVariantMap()},
                  [this](const QDBusMessage &) { askVersion(); });
}

void PortalHotkeys::askVersion()
{
    m_portal.call(u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                  {QString(shortcutsInterface), u"version"_s}, [this](const QDBusMessage &reply) {
                      if (const QString error = Portal::errorOf(reply); !error.isEmpty()) {
                          fail(error);
                          return;
                      }
                      const auto version = reply.arguments().value(0).value<QDBusVariant>();
                      m_version = version.variant().toUInt();
                      createSession();
                  });
}

// The portal documents the shortcuts as an argument of BindShortcuts alone. KDE 5.27 binds those
// that are an option of CreateSession, without a question; others ignore that option.
void PortalHotkeys::createSession()
{
    m_session = m_portal.sessionPath(programId);
    request(u"CreateSession"_s, {},
            {{u"session_handle_token"_s, QString(programId)}, {u"shortcuts"_s, shortcuts()}},
            [this](const QVariant &) { listShortcuts(); });
}

void PortalHotkeys::listShortcuts()
{
    request(u"ListShortcuts"_s, {session()}, {}, [this](const QVariant &bound) {
        // KDE shows its settings at each BindShortcuts, even if there is nothing left to bind.
        if (m_version == 1 && isEachIn(bound)) {
            finish(bound);
        } else {
            bindShortcuts();
        }
    });
}

void PortalHotkeys::bindShortcuts()
{
    request(u"BindShortcuts"_s, {session(), shortcuts(), parentWindow()}, {},
            [this](const QVariant &bound) { finish(bound); });
}

void PortalHotkeys::finish(const QVariant &shortcuts)
{
    m_timer.stop();
    m_triggers.clear();
    takeTriggers(shortcuts);
    qDebug() << "The desktop holds the hotkeys:" << m_triggers;
    setBound(true);
}

void PortalHotkeys::request(const QString &method, const QVariantList &arguments,
                            const QVariantMap &options,
                            const std::function<void(const QVariant &shortcuts)> &answered)
{
    m_portal.request(shortcutsInterface, method, arguments, options,
                     [this, method, answered](const QString &error, const QVariantMap &results) {
                         if (error.isEmpty()) {
                             answered(results.value(u"shortcuts"_s));
                         } else {
                             fail(method + ": "_L1 + error);
                         }
                     });
}

void PortalHotkeys::handleStarted()
{
    // An attempt in progress has started the portal itself and goes on.
    if (!m_timer.isActive()) {
        m_closures = 0;
        begin();
    }
}

void PortalHotkeys::handleEnded()
{
    qDebug() << "The desktop's portal has ended";
    end();
    setBound(false);
}

void PortalHotkeys::handleTimeout()
{
    // The attempt goes on: the user may not yet have seen the desktop's question.
    qWarning() << "The desktop does not hold the hotkeys: it has not answered yet";
    setBound(false);
}

void PortalHotkeys::handleSignal(const QDBusMessage &signal)
{
    const QVariantList arguments = signal.arguments();
    const bool isClosed = signal.interface() == sessionInterface;
    const QString session =
        isClosed ? signal.path() : arguments.value(0).value<QDBusObjectPath>().path();
    if (m_session.isEmpty() || session != m_session) {
        return;
    }
    if (isClosed) {
        handleClosed();
    } else if (signal.member() == "Activated"_L1) {
        handleActivated(arguments.value(1).toString());
    } else if (signal.member() == "Deactivated"_L1) {
        m_heldKeys.release(arguments.value(1).toString());
    } else if (m_isBound) {
        takeTriggers(arguments.value(1));
        Q_EMIT changed();
    }
}

void PortalHotkeys::handleActivated(const QString &id)
{
    if (!m_heldKeys.press(id, HeldKeys::Time::clock::now())) {
        return;
    }
    m_closures = 0;
    const Hotkey *hotkey = find(id);
    if (!hotkey) {
        return;
    }
    if (hotkey->command.isEmpty()) {
        Q_EMIT activated();
    } else {
        Q_EMIT commandActivated(hotkey->command);
    }
}

void PortalHotkeys::handleClosed()
{
    m_session.clear();
    const bool isBinding = m_timer.isActive();
    if (isBinding || ++m_closures > mostClosures) {
        fail(u"it closes the session"_s);
    } else {
        begin();
    }
}

void PortalHotkeys::takeTriggers(const QVariant &shortcuts)
{
    const QList<PortalShortcut> list = toPortalShortcuts(shortcuts);
    for (const PortalShortcut &shortcut : list) {
        if (const Hotkey *hotkey = find(shortcut.id)) {
            m_triggers.insert(hotkey->command,
                              shortcut.properties.value(u"trigger_description"_s).toString());
        }
    }
}

const PortalHotkeys::Hotkey *PortalHotkeys::find(const QString &id) const
{
    const auto found = std::find_if(m_hotkeys.cbegin(), m_hotkeys.cend(),
                                    [&id](const Hotkey &hotkey) { return idOf(hotkey) == id; });
    return found == m_hotkeys.cend() ? nullptr : &*found;
}

bool PortalHotkeys::isEachIn(const QVariant &shortcuts) const
{
    const QList<PortalShortcut> list = toPortalShortcuts(shortcuts);
    return std::all_of(m_hotkeys.cbegin(), m_hotkeys.cend(), [&list](const Hotkey &hotkey) {
        const QString id = idOf(hotkey);
        return std::any_of(list.cbegin(), list.cend(),
                           [&id](const PortalShortcut &shortcut) { return shortcut.id == id; });
    });
}

QVariant PortalHotkeys::session() const
{
    return QVariant::fromValue(QDBusObjectPath(m_session));
}

QVariant PortalHotkeys::shortcuts() const
{
    registerPortalShortcut();
    QList<PortalShortcut> shortcuts;
    for (const Hotkey &hotkey : m_hotkeys) {
        QVariantMap properties{{u"description"_s, hotkey.description}};
        const QString trigger = triggerOf(hotkey);
        if (!trigger.isEmpty()) {
            properties.insert(u"preferred_trigger"_s, trigger);
        }
        shortcuts.append({idOf(hotkey), properties});
    }
    return QVariant::fromValue(shortcuts);
}

// In the portal's form. A Wayland window would first have to be exported to other programs.
QString PortalHotkeys::parentWindow() const
{
    return m_window && QGuiApplication::platformName() == "xcb"_L1
               ? "x11:"_L1 + QString::number(m_window->winId(), 16)
               : QString();
}

} // namespace platform
