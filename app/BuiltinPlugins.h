// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class AppLauncher;
class GlobalHotkey;
class PluginManager;
class Settings;
class SettingsPlugin;

/// The plugins that come with Vaskel.
namespace builtinplugins {

/// Their commands and aliases. The user's own commands cannot have these names.
QStringList commands();

/// Registers them, then the user's own commands. The manager owns all plugins; the other arguments
/// are not owned and must outlive it. Returns the plugin of the settings page, which shows what is
/// wrong with the files of the user's own commands.
SettingsPlugin *registerAll(PluginManager &plugins, AppLauncher &launcher, Settings &settings,
                            const GlobalHotkey &hotkey);

} // namespace builtinplugins
