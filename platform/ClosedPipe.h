// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Makes a write into a pipe that nobody reads any more fail, where it would otherwise end this
/// process. Programs that are started from here are not spared.
void outliveClosedPipes();

} // namespace platform
