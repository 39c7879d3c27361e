// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>

class QFile;

namespace platform {

/// Opens a file of a predictable name in a folder that all users may share: empty, and for the user
/// alone. What the user left there earlier is replaced. False, with nothing changed, when there is
/// a link, a folder or somebody else's file of that name, when it cannot be created, as on some
/// systems as long as the leftover is open, or when another user could swap the file. On Linux that
/// is one who owns the folder or may write to it while it is not sticky; the group that bears the
/// user's name counts as himself, as root does. On Windows, where each user has a folder for
/// temporary files of his own, it is not asked.
bool openPrivateFile(QFile &file, QIODevice::OpenMode mode);

} // namespace platform
