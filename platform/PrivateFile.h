// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>

class QFile;

namespace platform {

/// Opens a file of a predictable name in a folder that all users may share: empty, and for the user
/// alone. What the user left there earlier is replaced. False, with nothing changed, when there is
/// a link, a folder or somebody else's file of that name, when another user could swap the file, or
/// when it cannot be created; on some systems that is so as long as the leftover is open.
bool openPrivateFile(QFile &file, QIODevice::OpenMode mode);

} // namespace platform
