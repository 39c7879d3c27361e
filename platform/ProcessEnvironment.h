// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Has the application object, which is made next, use the window system on which hotkeys and the
/// place of a window are for the program to say, where there is one and the user chose none.
void chooseWindowSystem();

/// Takes out of this process's environment what was meant for this process alone, such as the
/// tokens of its own start, so that nothing inherits it that is started from here. Called once the
/// application object has read them.
void dropPrivateVariables();

} // namespace platform
