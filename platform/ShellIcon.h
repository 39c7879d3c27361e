// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace platform {

/// The icon that a start-menu file names for itself, where QFileIconProvider would show the icon of
/// its file type instead. Null for every other file, and where the provider already does it right.
QIcon linkIcon(const QString &filePath);

/// The desktop shell's icon for a path that yielded none so far, existing or not, such as a bare
/// command or an address. Null where the shell has none, or the system no such service.
QPixmap shellPixmap(const QString &path);

} // namespace platform
