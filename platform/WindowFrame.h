// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Keeps Qt from asking where a window is before it shows. A window manager may put it into a frame
/// in the corner of the screen before it puts the frame to its place, and Qt would give the window
/// the place and the scale of the screen there. Call it once, before a window shows. Does nothing
/// where the window system tells a window its place itself.
void ignoreMovesOfHiddenWindows();

} // namespace platform
