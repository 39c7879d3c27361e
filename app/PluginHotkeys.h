// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class GlobalHotkey;
class PluginManager;
class Settings;

/// Registers the hotkeys of the enabled plugins anew, each under its primary command. The settings
/// plugin, of the command "set", never has one.
void reloadPluginHotkeys(GlobalHotkey &hotkey, const PluginManager &plugins,
                         const Settings &settings);
