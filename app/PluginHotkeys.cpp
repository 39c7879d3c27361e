// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PluginHotkeys.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "settings/Settings.h"

#include <QSet>

using namespace Qt::StringLiterals;

void reloadPluginHotkeys(GlobalHotkey &hotkey, const PluginManager &plugins,
                         const Settings &settings)
{
    hotkey.clearPluginHotkeys();

    const IPlugin *settingsPlugin = plugins.pluginForCommand(u"set"_s);
    QSet<const IPlugin *> seen;
    const QStringList commands = plugins.commands();
    for (const QString &command : commands) {
        const IPlugin *plugin = plugins.pluginForCommand(command);
        // Several commands may belong to one plugin; register it once.
        if (!plugin || plugin == settingsPlugin || seen.contains(plugin)) {
            continue;
        }
        seen.insert(plugin);
        const QString primary = plugin->command();
        if (settings.isPluginEnabled(primary)) {
            hotkey.registerPluginHotkey(primary, settings.pluginHotkey(primary));
        }
    }
}
