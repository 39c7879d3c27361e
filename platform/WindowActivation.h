// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace platform {

/// Call it before a window is shown and activated, if the user wants that. Where the window system
/// would only mark a window that shows behind others, it gets the focus nevertheless. For that the
/// window may be hidden, so that it becomes a new one.
void prepareActivation(QWidget *window);

} // namespace platform
