// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The text of the script that installs an update. It gives this process two seconds to
/// end, replaces the program with the downloaded file, starts the program, and deletes the download
/// and itself. If the replacement fails, it says so, keeps both files and starts nothing. Write it
/// in text mode as UTF-8. Both paths are absolute. On Linux they may contain any character. On
/// Windows the replacement fails with a percent sign or a character outside the OEM code page.
QString updateScript(const QString &downloadPath, const QString &programPath);

/// Runs the script detached from this process. Failure is silent.
void startUpdateScript(const QString &scriptPath);

} // namespace platform
