// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;

namespace platform {

/// Opens a file in the desktop's program for it, and a folder in the file manager; never a program
/// beside it whose name merely begins alike. The path is absolute. Returns whether the desktop
/// accepted the request, not whether a window opens.
bool openFile(const QString &path);

} // namespace platform
