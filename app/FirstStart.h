// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Whether the system registered a hotkey.
enum class HotkeyState {
    None, ///< there is no hotkey, or the system has none
    Registered,
    Held, ///< by another program
};

/// The message for a user who starts the program for the first time: the hotkey that shows the
/// window, or that another program holds it; and where to change it. The hotkey is in
/// QKeySequence::PortableText form. Empty without a hotkey.
QString firstStartMessage(const QString &hotkey, HotkeyState state);
