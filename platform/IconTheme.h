// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Lets QIcon::fromTheme() and QFileIconProvider find icons on a session whose desktop names no
/// icon theme, and icons outside of themes in all the places where programs install them. Call
/// once, after the application object is made and before the first icon is asked for. A theme that
/// the desktop names stays. Does nothing on a system without icon themes.
void ensureIconTheme();

} // namespace platform
