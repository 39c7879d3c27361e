// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The part of TestHome that depends on the operating system.
namespace testhome {

/// Redirects the user's files and preferences to the folder. Returns false on failure.
bool enterHome(const QString &folder);

/// Clears the parts of the home that are outside its folder.
void resetOutside();

/// Removes what would outlast the process.
void leaveHome();

} // namespace testhome
