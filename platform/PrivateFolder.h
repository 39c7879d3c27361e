// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Creates a folder, with its parents, that only the user can enter, or restricts an existing one
/// to the user. Returns false if that fails, or if it is a symbolic link or another user's.
bool makePrivateFolder(const QString &path);

} // namespace platform
