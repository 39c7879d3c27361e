// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Shows the folder that contains a file or folder in the desktop's file manager, with the file
/// selected if the file manager can select one. The path is absolute, with forward slashes. Returns
/// false, with nothing shown, if the path does not exist. Otherwise, on Linux with a session bus,
/// returns true at once, and opens the folder if the file manager then refuses. Elsewhere returns
/// whether the desktop accepted the request, not whether a window opens.
bool showInFolder(const QString &path);

} // namespace platform
