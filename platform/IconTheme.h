// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

class QFileInfo;

namespace platform {

/// Sets the icon theme for QIcon::fromTheme() and QFileIconProvider if the desktop names none, and
/// adds all folders in which programs install icons outside of themes. Call once, after the
/// application object is created and before the first icon is requested. Does nothing on a system
/// without icon themes.
void ensureIconTheme();

/// The icon that the theme has for the type of this file. QFileIconProvider asks the theme only on
/// some desktops, and returns one icon for all files on others. Null if the theme has none, for a
/// folder or a file without a suffix, and on a system without icon themes.
QIcon fileTypeIcon(const QFileInfo &file);

} // namespace platform
