// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class PluginManager;

/// The folders of the user's own commands: "commands" in the application data folder, and
/// "vaskel/commands" in each of the system's data folders.
namespace commandfolders {

/// Registers a plugin, whose parent is the manager, for each command folder. Call it after the
/// built-in plugins are registered: a command that is taken stays with its plugin. The user's
/// folder precedes the system's. Returns one line for each error, which is also logged.
QStringList registerAll(PluginManager &manager);

} // namespace commandfolders
