// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopHotkeys.h"
#include "platform/linux/HeldKeys.h"
#include "platform/linux/Portal.h"

#include <QHash>
#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <QWindow>

#include <chrono>

class QDBusMessage;

namespace platform {

/// Hotkeys through the interface GlobalShortcuts of the desktop portal:
/// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.GlobalShortcuts.html
/// They are bound again whenever the portal starts or closes the session. An attempt that fails
/// writes one line into the log.
class PortalHotkeys final : public DesktopHotkeys
{
    Q_OBJECT

public:
    /// Hotkeys that the desktop does not bind within the timeout are reported as not bound. They
    /// still may be later, when the user has answered the desktop's question.
    explicit PortalHotkeys(QWindow *window,
                           std::chrono::milliseconds timeout = std::chrono::seconds(25));

    void bind(const QList<Hotkey> &hotkeys) override;
    bool isBound() const override { return m_isBound; }
    std::optional<QString> trigger(const QString &command) const override;
    bool canConfigure() const override;
    void configure() override;

private:
    void begin();
    void end();
    void fail(const QString &reason);
    void setBound(bool isBound);

    void registerProgram();
    void askVersion();
    void createSession();
    void listShortcuts();
    void bindShortcuts();
    void finish(const QVariant &shortcuts);
    void request(const QString &method, const QVariantList &arguments, const QVariantMap &options,
                 const std::function<void(const QVariant &shortcuts)> &answered);

    void handleStarted();
    void handleEnded();
    void handleTimeout();
    void handleSignal(const QDBusMessage &signal);
    void handleActivated(const QString &id);
    void handleClosed();
    void takeTriggers(const QVariant &shortcuts);

    const Hotkey *find(const QString &id) const;
    bool isEachIn(const QVariant &shortcuts) const;
    QVariant session() const;
    QVariant shortcuts() const;
    QString parentWindow() const;

    QPointer<QWindow> m_window;
    Portal m_portal;
    QTimer m_timer; ///< from the beginning of an attempt to its end
    QList<Hotkey> m_hotkeys;
    bool m_isBound = false;

    uint m_version = 0;
    QString m_session;                  ///< its path, also while it is created
    QHash<QString, QString> m_triggers; ///< by command
    HeldKeys m_heldKeys;
    int m_closures = 0; ///< of sessions by the portal, since a hotkey last worked
};

} // namespace platform
