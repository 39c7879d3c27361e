// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Whether an existing folder, from which programs are started, is not another user's. On Linux no
/// other user may be able to replace a file in it; see isProtectedFolder(). On Windows the user or
/// the administrators must own it, unless the volume has no owners: anybody can make a folder among
/// the data of all users.
bool isTrustedFolder(const QString &path);

} // namespace platform
