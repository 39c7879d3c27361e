// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace platform {

/// The start-menu folders, the user's own before those of all users, without repetition. A folder
/// need not exist. Empty when the system names none.
QStringList startMenuRoots();

/// The file name pattern of a start-menu file, for QDir's name filters.
QString startMenuPattern();

/// The name under which a file of one of the roots is listed, or nothing when it is not to be
/// listed: hidden, damaged, unreadable, without an installed program, not meant for this desktop,
/// or overridden by a file of an earlier root. Called for hundreds of files at each start.
std::optional<QString> startMenuName(const QString &root, const QString &filePath);

} // namespace platform
