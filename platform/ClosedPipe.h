// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Makes a write into a pipe without a reader fail instead of ending this process. Started programs
/// keep the system's default.
void ignoreClosedPipes();

} // namespace platform
