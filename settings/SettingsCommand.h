// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The commands of the settings page, each of which opens it at a different place. The first is
/// that of the plugin, the others are its aliases.
namespace settingscommand {

inline constexpr QLatin1StringView set{"set"};
inline constexpr QLatin1StringView user{"user"};
inline constexpr QLatin1StringView plugin{"plugin"};

} // namespace settingscommand
