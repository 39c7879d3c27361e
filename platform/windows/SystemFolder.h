// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The folder of Windows' own commands, with backslashes. Unlike the variable SystemRoot, it does
/// not depend on the environment.
QString systemFolder();

/// The folder of Windows, with backslashes.
QString windowsFolder();

} // namespace platform
