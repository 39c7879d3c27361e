// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A home of its own for each test process, in a temporary folder that goes with the process. It is
/// in force before main() runs: linking it is enough. The process ends at once if the folders that
/// the program would write to were not inside it.
namespace testhome {

/// The home folder itself, without a trailing slash.
QString path();

/// Where the program keeps its application data, as QStandardPaths gives it; created.
QString appDataPath();

/// Empties the home, so that the next case starts like a first run: the settings store forgets
/// what it has read, and a store that is still open what it has not written yet.
void reset();

/// Writes a file in the home, with its folders; the relative path is taken from path().
/// Returns the absolute path.
QString writeFile(const QString &relativePath, const QByteArray &content);

} // namespace testhome
