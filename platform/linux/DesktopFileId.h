// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The desktop-file id of a file below a start-menu folder: its relative path with dashes in place
/// of slashes.
QString desktopFileId(const QString &root, const QString &filePath);

/// The file below a start-menu folder with this id; empty if there is none. May be damaged or a
/// dangling symbolic link, since these override later folders too.
QString fileOfId(const QString &root, const QString &id);

} // namespace platform
