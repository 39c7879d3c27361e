// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace testhome {

/// The key, for the command "reg", that is HKEY_CURRENT_USER in this process.
QString registryPath();

} // namespace testhome
