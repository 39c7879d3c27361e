// SPDX-License-Identifier: GPL-3.0-or-later
#include "systemmoveresize.h"

namespace QWK {

// Windows looks at the button itself before it starts to move or to resize.
void cancelSystemMoveResize(QWindow *) {}

} // namespace QWK
