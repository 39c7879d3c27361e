// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The folder of Windows' own commands, with backslashes. Unlike the variable SystemRoot, it does
/// not depend on the environment. Empty if the system does not tell.
QString systemFolder();

/// The same for the folder of Windows.
QString windowsFolder();

} // namespace platform
