// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The exit statuses of the program.
namespace exitstatus {

constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int misused = 2; ///< the command line is wrong

} // namespace exitstatus
