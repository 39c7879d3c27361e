// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcessEnvironment>

namespace platform {

/// The environment for programs that are started from here: this process's own, less the variables
/// that were meant for this process alone, such as the tokens of its own start.
QProcessEnvironment programEnvironment();

} // namespace platform
