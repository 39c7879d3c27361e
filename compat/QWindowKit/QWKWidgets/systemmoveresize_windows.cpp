// SPDX-License-Identifier: GPL-3.0-or-later
#include "systemmoveresize.h"

namespace QWK {

// Windows ends the move itself when the button is released.
void cancelSystemMoveResize(QWindow *) {}

} // namespace QWK
