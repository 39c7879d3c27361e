// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace testhome {

/// Where other programs find what this process takes for HKEY_CURRENT_USER, as "reg" takes it.
QString registryPath();

} // namespace testhome
