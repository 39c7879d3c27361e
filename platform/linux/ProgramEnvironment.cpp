// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProgramEnvironment.h"

namespace platform {
QProcessEnvironment programEnvironment()
{
    return QProcessEnvironment::systemEnvironment();
}
} // namespace platform
