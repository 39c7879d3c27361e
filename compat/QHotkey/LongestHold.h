// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

/// For how long at most the keys that follow a press of a hotkey are held back.
constexpr std::chrono::milliseconds longestHold(300);
