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

/// The colours that the user prefers for the whole desktop; Unknown where nobody can tell.
ColorScheme colorScheme();

/// Calls back each time when that preference has changed, for as long as the context lives. Never,
/// where nobody tells of a change.
void watchColorScheme(QObject *context, const std::function<void()> &changed);

} // namespace platform
