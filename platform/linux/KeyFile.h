// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/GlibPointer.h"

class QFile;
class QString;

namespace platform {

/// Opens a file of groups and keys, such as a desktop entry or the index of an icon theme, for
/// reading. Returns false if it is missing, too large or no regular file.
bool openKeyFile(QFile &file);

/// Reads such a file. Returns false if it cannot be opened, or is malformed, which may leave some
/// of its keys.
bool readKeyFile(GKeyFile *keyFile, const QString &path);

} // namespace platform
