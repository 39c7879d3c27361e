// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HotkeyRegistration.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "settings/Settings.h"

#include <QKeySequence>

namespace {

bool isWithoutKeys(const platform::DesktopHotkeys::Hotkey &hotkey)
{
    return QKeySequence(hotkey.sequence, QKeySequence::PortableText).isEmpty();
}

} // namespace

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
    m_hotkey->clearPluginHotkeys();
    const Hotkeys hotkeys = isBound() ? Hotkeys() : pluginHotkeys();
    for (const platform::DesktopHotkeys::Hotkey &hotkey : hotkeys) {
        m_hotkey->registerPluginHotkey(hotkey.command, hotkey.sequence);
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
    Hotkeys hotkeys = pluginHotkeys();
    hotkeys.prepend({{}, m_settings->globalHotkey(), tr("Show or hide the window")});
    hotkeys.removeIf(isWithoutKeys);
    m_desktop->bind(hotkeys);
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

// Each under its primary command.
HotkeyRegistration::Hotkeys HotkeyRegistration::pluginHotkeys() const
{
    Hotkeys hotkeys;
    const QList<IPlugin *> plugins = m_plugins->configurablePlugins();
    for (const IPlugin *plugin : plugins) {
        const QString command = plugin->command();
        if (m_settings->isPluginEnabled(command)) {
            hotkeys.append({command, m_settings->pluginHotkey(command),
                            tr("Show the command %1").arg(command)});
        }
    }
    return hotkeys;
}
