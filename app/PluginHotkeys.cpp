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
    const QStringList words = plugins.commands();
    for (const QString &word : words) {
        const IPlugin *plugin = plugins.pluginForCommand(word);
        // An alias leads to a plugin that was seen already, and counts once.
        if (!plugin || plugin == settingsPlugin || seen.contains(plugin)) {
            continue;
        }
        seen.insert(plugin);
        const QString command = plugin->command();
        if (settings.isPluginEnabled(command)) {
            hotkey.registerPluginHotkey(command, settings.pluginHotkey(command));
        }
    }
}
