// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

/// Where a hotkey comes from, as far as the settings page tells.
struct HotkeyOrigin
{
    enum class Holder {
        Untold,
        Program,
        Desktop,
        Nobody, ///< works only while an X11 window has the focus, unless the user binds a command
    };

    Holder holder = Holder::Untold;
    QString trigger;                 ///< the keys in the desktop's words, if it tells
    std::function<void()> configure; ///< opens the desktop's dialog; empty without one
};
