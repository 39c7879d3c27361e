// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Creates a folder, with its parents, that only the user can enter, or restricts an existing one
/// to the user; on Windows, where others may pass a closed folder, also the files in it. Returns
/// false if that fails, or if it is a symbolic link or another user's. On a Windows volume without
/// owners, it only creates the folder, and returns true.
bool makePrivateFolder(const QString &path);

/// Whether no other user can replace a file in an existing folder, the folder itself, one of its
/// parents, or a symbolic link on the way. On Linux each of them must belong to the user or to
/// root, and others may write only where it is sticky; the group with the user's own name is
/// trusted if it lists no other member. On Windows the access lists tell: nobody but the user, the
/// system and the administrators may delete or rename there, or change who may. True where a volume
/// stores no owners.
bool isProtectedFolder(const QString &path);

/// The folder for temporary files that no other user may replace. On Windows, where TEMP may name
/// any folder, this is a private one among the user's data if that folder is not protected, and
/// empty if neither can be; on Linux openPrivateFile() fails there instead.
QString temporaryFolder();

} // namespace platform
