// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QFile;

namespace platform {

/// Opens a regular file or a resource of the program for reading, and never waits. Returns false
/// for anything else, such as a pipe, which may block for ever, or a device, which may never end. A
/// symbolic link counts as its target. QFile::fileName() may be empty afterwards.
bool openRegularFile(QFile &file);

} // namespace platform
