// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FontLibrary.h"

namespace platform {

// Qt asks the system for each font, which needs no initialisation.
FontLibrary::FontLibrary() = default;

void FontLibrary::wait() {}

} // namespace platform
