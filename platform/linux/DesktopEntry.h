// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/linux/GlibPointer.h"

#include <QString>

namespace platform {

/// A desktop entry as GLib's key file; null for whatever is not a well-formed file of ordinary
/// size. It is the quick way, for the hundreds of entries that each start of the program reads.
KeyFilePointer loadDesktopEntry(const QString &filePath);

/// A desktop entry as an application; null also where the entry is none, or where its TryExec or
/// its program is not installed. Takes five times as long as loadDesktopEntry().
ObjectPointer<GDesktopAppInfo> loadApplication(const QString &filePath);

} // namespace platform
