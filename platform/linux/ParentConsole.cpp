// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ParentConsole.h"

namespace platform {

struct ParentConsole::Data
{
};

// Each program inherits the streams.
ParentConsole::ParentConsole() = default;
ParentConsole::~ParentConsole() = default;

} // namespace platform
