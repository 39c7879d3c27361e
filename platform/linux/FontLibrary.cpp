// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FontLibrary.h"

#include <fontconfig/fontconfig.h>

#include <system_error>

namespace platform {

FontLibrary::FontLibrary()
{
    try {
        m_thread = std::thread(&FcInit);
    } catch (const std::system_error &) {
        // The system has no thread left.
    }
}

void FontLibrary::wait()
{
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

} // namespace platform
