// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The suffix of the start-menu files that openLink() opens, in lower case and without the dot.
QString linkSuffix();

/// Whether the path has that suffix; case does not matter.
bool isLink(const QString &path);

/// Starts the program of a link in a session of its own that outlives this process. Returns false,
/// with nothing started, if the file is missing, damaged or refused.
bool openLink(const QString &filePath);

} // namespace platform
