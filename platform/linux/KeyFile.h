// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/GlibPointer.h"

#include <QString>

namespace platform {

/// Reads a file of groups and keys, such as a desktop entry. Returns false if the file is
/// malformed, which may leave some of its keys, or is missing, too large or no regular file.
bool readKeyFile(GKeyFile *keyFile, const QString &path);

} // namespace platform
