// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Shows a folder in the desktop's file manager. The path is absolute, with forward slashes. True
/// when the desktop took the request, which says nothing of what then comes up.
bool openFolder(const QString &path);

} // namespace platform
