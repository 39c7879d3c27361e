// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWindow;

namespace QWK {

/// Cancels a move or resize that QWindow::startSystemMove() or startSystemResize() began. Does
/// nothing if there is none.
void cancelSystemMoveResize(QWindow *window);

} // namespace QWK
