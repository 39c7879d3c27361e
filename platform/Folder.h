// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Shows a folder in the desktop's file manager. The path is absolute, with forward slashes.
/// Returns whether the desktop accepted the request, not whether a window opens.
bool openFolder(const QString &path);

} // namespace platform
