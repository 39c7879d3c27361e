// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Opens a link or folder as a double click does. Returns whether the shell accepted it.
bool shellOpen(const QString &path);

} // namespace platform
