// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Has the shell open a link or folder, as a double click does. False when it would not.
bool shellOpen(const QString &path);

} // namespace platform
