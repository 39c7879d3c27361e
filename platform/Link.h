// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The suffix, in lower case and without the dot, of the start-menu files that openLink() opens.
QString linkSuffix();

/// Has the desktop start what the link or desktop entry names, in a session of its own that
/// outlives this process. True when the start was accepted; false for a file that is missing,
/// damaged or refused, with nothing started.
bool openLink(const QString &filePath);

} // namespace platform
