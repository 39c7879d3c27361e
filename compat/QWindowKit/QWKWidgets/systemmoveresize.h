// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWindow;

namespace QWK {

/// Ends a move or resize of the window that QWindow had the window system start, wherever it has
/// got to; nothing if there is none.
void cancelSystemMoveResize(QWindow *window);

} // namespace QWK
