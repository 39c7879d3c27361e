// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Creates a folder, with its parents, that only the user can enter, or restricts an existing one
/// to the user; on Windows, where others may pass a closed folder, also the files in it. Returns
/// false if that fails, or if it is a symbolic link or another user's.
bool makePrivateFolder(const QString &path);

/// Whether no other user can replace a file in an existing folder, the folder itself, one of its
/// parents, or a symbolic link on the way. On Linux each of them must belong to the user or to
/// root, and others may write only where it is sticky; the group with the user's own name is
/// trusted if it lists no other member. Always true on Windows, where each user has a profile of
/// his own.
bool isProtectedFolder(const QString &path);

} // namespace platform
