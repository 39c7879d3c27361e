// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace platform {

/// The start-menu folders without duplicates, the user's own before those of all users. A folder
/// need not exist. Empty if the system names none.
QStringList startMenuRoots();

/// The names of the links of one folder, by file path. "root" is the start-menu folder that
/// contains them. A file without an entry must not be listed: it is hidden, damaged, unreadable,
/// meant for another desktop, without an installed program, or overridden by a file of an earlier
/// root. Called for hundreds of files at each start.
QHash<QString, QString> startMenuNames(const QString &root, const QStringList &filePaths);

} // namespace platform
