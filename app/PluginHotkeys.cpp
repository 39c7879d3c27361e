// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PluginHotkeys.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "settings/Settings.h"

void reloadPluginHotkeys(GlobalHotkey &hotkey, const PluginManager &plugins,
                         const Settings &settings)
{
    hotkey.clearPluginHotkeys();

    const QList<IPlugin *> configurable = plugins.configurablePlugins();
    for (const IPlugin *plugin : configurable) {
        const QString primary = plugin->command();
        if (settings.isPluginEnabled(primary)) {
            hotkey.registerPluginHotkey(primary, settings.pluginHotkey(primary));
        }
    }
}
