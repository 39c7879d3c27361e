// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;

namespace platform {

/// Opens a file in the desktop's program for it, and a folder in the file manager. Never starts a
/// program beside the file whose name begins alike, such as "README.exe" for "README". The path is
/// absolute. Returns whether the desktop accepted the request, not whether a window opens.
bool openFile(const QString &path);

} // namespace platform
