// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A temporary home for each test process. Takes effect before main(); linking it is enough. Ends
/// the process at once if the program's folders are not inside it.
namespace testhome {

/// The home folder, without a trailing slash.
QString path();

/// QStandardPaths::AppDataLocation, created.
QString appDataPath();

/// Empties the home, so that the next case starts like a first run. An open QSettings forgets what
/// it has read or not yet written.
void reset();

/// Writes a file and its folders, relative to path(). Returns the absolute path.
QString writeFile(const QString &relativePath, const QByteArray &content);

} // namespace testhome
