// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The operating system's half of TestHome.
namespace testhome {

/// Points everything by which the system finds a user's files and preferences into the folder.
/// False when the system would not have it.
bool enterHome(const QString &folder);

/// Empties what belongs to the home but lies outside of its folder.
void resetOutside();

/// Undoes what outlasts the process.
void leaveHome();

} // namespace testhome
