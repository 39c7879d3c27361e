// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Keeps Qt from asking for a window's position before it is shown. Until then a window manager may
/// have it in a frame at the corner of the screen, and Qt would take that position and the scale of
/// the screen there. Call it once, before a window shows. Does nothing where the window system
/// tells a window its position itself.
void ignoreMovesOfHiddenWindows();

} // namespace platform
