// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class GlobalHotkey;
class PluginManager;
class Settings;

/// Releases all plugin hotkeys and registers those of the enabled plugins anew, each under its
/// primary command word. The settings plugin, the one of the word "set", never has one.
void reloadPluginHotkeys(GlobalHotkey &hotkey, const PluginManager &plugins,
                         const Settings &settings);
