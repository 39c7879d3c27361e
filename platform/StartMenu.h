// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace platform {

/// The start-menu folders, the user's own before those of all users, without repetition. A folder
/// need not exist. Empty when the system names none.
QStringList startMenuRoots();

/// The names under which the files of one folder are listed, by path; "root" is the start-menu
/// folder in or below which they lie. All of them have the suffix of links. A file without an entry
/// is not to be listed: hidden, damaged, unreadable, without an installed program, not meant for
/// this desktop, or overridden by a file of an earlier root. Called for hundreds of files at each
/// start.
QHash<QString, QString> startMenuNames(const QString &root, const QStringList &filePaths);

} // namespace platform
