// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <thread>

namespace platform {

/// Initialises the system's font library on a thread of its own, where that takes a large part of a
/// start. The thread runs the library alone; all code of the program stays on the first thread. The
/// library reads the environment and the locale, so nothing may change them from the constructor to
/// wait(). Qt initialises the library at the first text if there is no such thread.
class FontLibrary
{
public:
    FontLibrary();
    ~FontLibrary() { wait(); }
    FontLibrary(const FontLibrary &) = delete;
    FontLibrary &operator=(const FontLibrary &) = delete;

    /// Returns when the library is initialised. Call before the first font is used.
    void wait();

private:
    std::thread m_thread;
};

} // namespace platform
