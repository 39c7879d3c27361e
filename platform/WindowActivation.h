// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace platform {

/// Call it before a window is shown and activated at the user's request. Some window systems would
/// only mark a window that is behind others; this makes it get the focus nevertheless. For that it
/// may hide the window, so that it is shown as a new one.
void prepareActivation(QWidget *window);

} // namespace platform
