// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Registers the running executable's path to start at log-in, or removes that registration, even
/// if another program wrote it. Called at each start and at each change of the setting. A failure
/// is silent and leaves the system unchanged.
void applyAutoStart(bool enabled);

} // namespace platform
