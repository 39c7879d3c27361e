// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The text of the script that installs an update. It gives this process two seconds to
/// end, replaces the program with the downloaded file, starts the program, and deletes the download
/// and itself. If the replacement fails, it says so, keeps both files and starts nothing. Write it
/// in text mode as UTF-8. Both paths are absolute and may contain any character.
QString updateScript(const QString &downloadPath, const QString &programPath);

/// Runs the script detached from this process. Failure is silent.
void startUpdateScript(const QString &scriptPath);

} // namespace platform
