// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qnamespace.h>

#include <optional>

/// A key combination as RegisterHotKey takes it.
struct WindowsKey
{
    unsigned modifiers = 0; ///< MOD_ constants
    unsigned code = 0;      ///< a virtual-key code

    friend bool operator==(const WindowsKey &, const WindowsKey &) = default;
};

/// Finds the key in the current keyboard layout. Returns nothing if no key types it.
std::optional<WindowsKey> windowsKey(QKeyCombination combination);
