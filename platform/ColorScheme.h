// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class QObject;

namespace platform {

enum class ColorScheme {
    Unknown,
    Light,
    Dark,
};

/// The colour scheme that the user prefers for the desktop; Unknown if the system does not tell.
ColorScheme colorScheme();

/// Calls back after each change of that preference, as long as the context lives. Never calls back
/// on a system that does not report changes.
void watchColorScheme(QObject *context, const std::function<void()> &changed);

} // namespace platform
