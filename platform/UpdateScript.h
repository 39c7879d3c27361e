// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The text of the script that outlives this process and installs an update: it gives the process
/// two seconds to end, puts the downloaded file in the place of the program, starts the program,
/// and removes the download and itself. If the file cannot be replaced, it says so, leaves the
/// download and the program as they are, and starts nothing. To be written in text mode, as UTF-8;
/// both paths are absolute, and whatever they hold is data.
QString updateScript(const QString &downloadPath, const QString &programPath);

/// Runs the script detached from this process. Failure is silent.
void startUpdateScript(const QString &scriptPath);

} // namespace platform
