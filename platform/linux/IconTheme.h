// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// The icon theme below the search paths that is most likely to have an icon for every program;
/// empty where no theme is installed.
QString richestIconTheme(const QStringList &searchPaths);

/// Lets QIcon::fromTheme() find icons on a session whose desktop names no icon theme, and icons
/// outside of themes in all the places where programs install them. Only the first call works; it
/// comes with the first icon that is needed, so that a start without a new icon does not pay.
void prepareIconTheme();

} // namespace platform
