// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Makes a folder, with its parents, that nobody but the user can enter, or closes one that is
/// there to everybody else. False when it cannot be made, is a link, or belongs to another user.
bool makePrivateFolder(const QString &path);

} // namespace platform
