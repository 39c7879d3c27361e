// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Registers the running executable's present path to start when the user logs in, or removes that
/// registration, whoever wrote it. Called at each start of the program and at each change, whether
/// or not it is already so. A failure is silent and leaves the system as it was.
void applyAutoStart(bool enabled);

} // namespace platform
