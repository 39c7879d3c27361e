// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class AppLauncher;
class GlobalHotkey;
class PluginManager;
class Settings;
class SettingsPlugin;

/// The plugins of the commands that Vaskel brings.
namespace builtinplugins {

/// Their commands and aliases, which no command of the user's own can have.
QStringList commands();

/// Registers them and then the commands of the user's own. The manager owns all; the others are not
/// owned and must outlive it. Returns the plugin of the settings page, which shows what is wrong
/// with the files of the user's own commands.
SettingsPlugin *registerAll(PluginManager &plugins, AppLauncher &launcher, Settings &settings,
                            const GlobalHotkey &hotkey);

} // namespace builtinplugins
