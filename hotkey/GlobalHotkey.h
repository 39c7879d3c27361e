// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QHotkey;

/// The system-wide hotkeys of the program: one main hotkey, and any number for plugins. Key
/// sequences are in QKeySequence::PortableText form. A sequence that another program holds, or that
/// the system refuses, is not registered: the return value says so, and nothing tries again. The
/// signals are emitted from the event loop.
class GlobalHotkey : public QObject
{
    Q_OBJECT

public:
    /// Starts without hotkeys.
    explicit GlobalHotkey(QObject *parent = nullptr);

    /// Replaces the main hotkey; returns whether the new one is registered. The old one is
    /// unregistered in any case. An empty or invalid sequence leaves no main hotkey.
    bool setMainHotkey(const QString &sequence);

    /// Adds a hotkey for a command; returns whether it is registered. Does not replace an earlier
    /// hotkey of the command: call clearPluginHotkeys() first.
    bool registerPluginHotkey(const QString &command, const QString &sequence);

    /// Removes all plugin hotkeys, but not the main one.
    void clearPluginHotkeys();

    /// Whether the main hotkey works.
    bool isMainHotkeyRegistered() const;

    /// Whether the system has refused the main hotkey, or the hotkey of a command, usually because
    /// another program holds it. False without a hotkey, and on a system without hotkeys.
    bool isMainHotkeyHeld() const { return m_isMainHotkeyHeld; }
    bool isPluginHotkeyHeld(const QString &command) const;

Q_SIGNALS:
    /// The user pressed the main hotkey.
    void activated();
    /// The user pressed the plugin hotkey of this command.
    void commandActivated(const QString &command);

private:
    QHotkey *m_mainHotkey = nullptr;
    bool m_isMainHotkeyHeld = false;
    QHash<QString, QHotkey *> m_pluginHotkeys; ///< by command, including unregistered ones
};
