// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>

class QFile;

namespace platform {

/// Opens an empty file that only the user can access, in a folder that all users may share, such as
/// the one for temporary files. An earlier file of the user's is replaced. Returns false if
///
/// - the name belongs to a symbolic link, a folder or another user's file,
/// - the file cannot be created; some systems refuse while the earlier file is open,
/// - on Linux, another user could replace the file or a folder that contains it; see
/// isProtectedFolder(). On Windows, choose the folder with temporaryFolder().
///
/// On Windows its access list admits the user and the system alone, whatever the folder's.
bool openPrivateFile(QFile &file, QIODevice::OpenMode mode);

} // namespace platform
