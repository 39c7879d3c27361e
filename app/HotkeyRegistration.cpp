// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HotkeyRegistration.h"

#include "app/PluginHotkeys.h"
#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "settings/Settings.h"

#include <QKeySequence>

HotkeyRegistration::HotkeyRegistration(GlobalHotkey *hotkey, const PluginManager *plugins,
                                       const Settings *settings, platform::DesktopHotkeys *desktop)
    : m_hotkey(hotkey)
    , m_plugins(plugins)
    , m_settings(settings)
    , m_desktop(desktop)
{
    m_bindTimer.setSingleShot(true);
    if (desktop) {
        using platform::DesktopHotkeys;
        connect(&m_bindTimer, &QTimer::timeout, this, &HotkeyRegistration::bind);
        connect(desktop, &DesktopHotkeys::activated, hotkey, &GlobalHotkey::activated);
        connect(desktop, &DesktopHotkeys::commandActivated, hotkey,
                &GlobalHotkey::commandActivated);
        connect(desktop, &DesktopHotkeys::changed, this, &HotkeyRegistration::follow);
    }
}

void HotkeyRegistration::registerMainHotkey()
{
    m_hotkey->setMainHotkey(isBound() ? QString() : m_settings->globalHotkey());
    m_bindTimer.start(0);
}

void HotkeyRegistration::registerPluginHotkeys()
{
    if (isBound()) {
        m_hotkey->clearPluginHotkeys();
    } else {
        reloadPluginHotkeys(*m_hotkey, *m_plugins, *m_settings);
    }
    m_bindTimer.start(0);
}

HotkeyOrigin HotkeyRegistration::origin(const QString &command) const
{
    using Holder = HotkeyOrigin::Holder;
    const bool isOfWindow = command.isEmpty();
    if (!m_desktop) {
        const bool isHere = isOfWindow && m_hotkey->isMainHotkeyRegistered();
        return {isHere ? Holder::Program : Holder::Untold, {}, {}};
    }
    if (const std::optional<QString> trigger = m_desktop->trigger(command)) {
        HotkeyOrigin origin{Holder::Desktop, *trigger, {}};
        if (isOfWindow && m_desktop->canConfigure()) { // the dialog shows all hotkeys
            origin.configure = [desktop = m_desktop] {
                desktop->configure();
            };
        }
        return origin;
    }
    return {isOfWindow ? Holder::Nobody : Holder::Untold, {}, {}};
}

void HotkeyRegistration::bind()
{
    m_desktop->bind(hotkeys());
}

// The desktop and this program must not both react to a key.
void HotkeyRegistration::follow()
{
    if (m_wasBound != isBound()) {
        m_wasBound = isBound();
        registerMainHotkey();
        registerPluginHotkeys();
    }
}

QList<platform::DesktopHotkeys::Hotkey> HotkeyRegistration::hotkeys() const
{
    QList<platform::DesktopHotkeys::Hotkey> hotkeys;
    const auto add = [&hotkeys](const QString &command, const QString &sequence,
                                const QString &description) {
        if (!QKeySequence(sequence, QKeySequence::PortableText).isEmpty()) {
            hotkeys.append({command, sequence, description});
        }
    };
    add({}, m_settings->globalHotkey(), tr("Show or hide the window"));
    const QList<IPlugin *> plugins = m_plugins->configurablePlugins();
    for (const IPlugin *plugin : plugins) {
        const QString command = plugin->command();
        if (m_settings->isPluginEnabled(command)) {
            add(command, m_settings->pluginHotkey(command), tr("Show the command %1").arg(command));
        }
    }
    return hotkeys;
}
