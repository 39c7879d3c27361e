// SPDX-License-Identifier: GPL-3.0-or-later
#include "systemmoveresize.h"

namespace QWK {

// Windows ends a move by itself when the button is up.
void cancelSystemMoveResize(QWindow *) {}

} // namespace QWK
