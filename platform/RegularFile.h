// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QFile;

namespace platform {

/// Opens a file or a resource of the program for reading. Never waits. Returns false if it cannot
/// be read, or is no regular file: opening a pipe may wait for ever, and a device may never end. A
/// symbolic link counts as its target. The file may then no longer know its name.
bool openRegularFile(QFile &file);

} // namespace platform
