// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWindow;

namespace platform {

/// Keeps the window system from giving the window the keyboard focus, at a click or when another
/// window hides. Call it for each native window, before it is shown. Does nothing on Wayland, where
/// a window cannot refuse the focus.
void refuseFocus(QWindow *window);

/// Keeps a tray from taking the focus from the program's windows when it embeds the icon. Call it
/// once, before the icon is shown. Does nothing where trays embed no windows.
void refuseFocusOfTray();

} // namespace platform
