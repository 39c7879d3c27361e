// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Whether the system blends the transparent pixels of a window with what is behind it; otherwise
/// they are black. True if the system does not tell.
bool isCompositing();

} // namespace platform
