// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProgramEnvironment.h"

namespace platform {

// Windows gives a started program no variables that were meant for it alone.
QProcessEnvironment programEnvironment()
{
    return QProcessEnvironment::systemEnvironment();
}

} // namespace platform
