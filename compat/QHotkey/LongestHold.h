// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

/// The longest time for which the keys that follow a press of a hotkey are held back.
constexpr std::chrono::milliseconds longestHold(300);
