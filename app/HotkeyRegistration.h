// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopHotkeys.h"
#include "settings/HotkeyOrigin.h"

#include <QObject>
#include <QTimer>

class GlobalHotkey;
class PluginManager;
class Settings;

/// Registers the hotkeys of the settings: with the desktop where it holds hotkeys for programs, and
/// with GlobalHotkey as long as it does not.
class HotkeyRegistration : public QObject
{
    Q_OBJECT

public:
    /// The objects must live as long as this one; the desktop may be null.
    HotkeyRegistration(GlobalHotkey *hotkey, const PluginManager *plugins, const Settings *settings,
                       platform::DesktopHotkeys *desktop);

    /// Call these at the start and after a change of the settings. The desktop learns of all
    /// changes together, in the next pass of the event loop. A disabled plugin has no hotkey, and
    /// the settings plugin, of the command "set", never has one.
    void registerMainHotkey();
    void registerPluginHotkeys();

    /// Where the hotkey of a command comes from, or of the window if the command is empty.
    HotkeyOrigin origin(const QString &command) const;

private:
    using Hotkeys = QList<platform::DesktopHotkeys::Hotkey>;

    bool isBound() const { return m_desktop && m_desktop->isBound(); }
    void bind();
    void follow();
    Hotkeys pluginHotkeys() const;

    GlobalHotkey *m_hotkey;
    const PluginManager *m_plugins;
    const Settings *m_settings;
    platform::DesktopHotkeys *m_desktop;
    QTimer m_bindTimer;
    bool m_wasBound = false;
};
