// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Sets the icon theme for QIcon::fromTheme() and QFileIconProvider if the desktop names none, and
/// adds all folders in which programs install icons outside of themes. Call once, after the
/// application object is created and before the first icon is requested. Does nothing on a system
/// without icon themes.
void ensureIconTheme();

} // namespace platform
