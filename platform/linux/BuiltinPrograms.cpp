// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

namespace platform {
ProgramInfo builtinProgram(BuiltinProgram)
{
    return {};
}
} // namespace platform
