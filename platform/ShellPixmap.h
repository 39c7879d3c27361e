// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>

class QString;

namespace platform {

/// The icon that the desktop shell has for a path, for which Qt has none. The path need not exist:
/// it may be a bare command or an address. It has at least this width in pixels if the shell has
/// such an icon. Null if the shell has no icon, or the system no shell.
QPixmap shellPixmap(const QString &path, int width = 32);

} // namespace platform
