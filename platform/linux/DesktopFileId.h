// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The desktop-file id of a file below a start-menu folder: its relative path with dashes for the
/// slashes.
QString desktopFileId(const QString &root, const QString &filePath);

/// The file below a start-menu folder that has the id; empty if there is none. It may be a damaged
/// one, even a dangling link, since those too override what stands in a later folder.
QString fileOfId(const QString &root, const QString &id);

} // namespace platform
