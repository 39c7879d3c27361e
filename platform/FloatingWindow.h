// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWindow;

namespace platform {

/// How a window manager that tiles windows leaves a window out.
enum class Floating {
    AsDialog,  ///< it still manages the window and gives it the focus
    Unmanaged, ///< it leaves the window alone, which stays above others, at its size and place
};

/// Keeps a window manager from tiling the window, or from enlarging it, if it is one that does so.
/// Call it each time before the native window is shown, when it has its position. Where windows
/// float anyway, it only takes an unmanaged X11 window out of its window group.
void keepFloating(QWindow *window, Floating floating);

/// Whether a window shows at the position that the program gives it.
bool canPlaceWindows();

} // namespace platform
