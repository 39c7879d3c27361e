// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Whether the session is one of a Wayland compositor, also for a program that uses its X server.
bool isWaylandSession();

} // namespace platform
