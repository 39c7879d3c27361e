// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/BuiltinPlugins.h"

#include "commands/CommandFolders.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "plugins/AppPlugin.h"
#include "plugins/CalcPlugin.h"
#include "plugins/DirectoryPlugin.h"
#include "plugins/FilePlugin.h"
#include "plugins/SettingsPlugin.h"
#include "plugins/TodoPlugin.h"
#include "settings/SettingsCommand.h"

using namespace Qt::StringLiterals;

QStringList builtinplugins::commands()
{
    // Not from the plugins: creating them would read the tasks.
    return {u"app"_s,
            u"calc"_s,
            u"cd"_s,
            u"file"_s,
            u"todo"_s,
            settingscommand::set,
            settingscommand::user,
            settingscommand::plugin};
}

SettingsPlugin *builtinplugins::registerAll(PluginManager &plugins, AppLauncher &launcher,
                                            Settings &settings, const GlobalHotkey &hotkey)
{
    auto *settingsPlugin = new SettingsPlugin(&settings, &plugins, &plugins);
    settingsPlugin->setHotkeyCheck([&hotkey](const QString &command) {
        return command.isEmpty() ? hotkey.isMainHotkeyHeld() : hotkey.isPluginHotkeyHeld(command);
    });
    // The first plugin with a command keeps it, so the order matters.
    plugins.registerPlugin(new AppPlugin(&launcher, &plugins));
    plugins.registerPlugin(new CalcPlugin(&plugins));
    plugins.registerPlugin(new DirectoryPlugin(&plugins));
    plugins.registerPlugin(settingsPlugin);
    plugins.setSettings(&settings);
    plugins.registerPlugin(new FilePlugin(plugins.rowsChanged(), &plugins));
    plugins.registerPlugin(new TodoPlugin(&plugins));
    settingsPlugin->setCommandErrors(commandfolders::registerAll(plugins));
    return settingsPlugin;
}
