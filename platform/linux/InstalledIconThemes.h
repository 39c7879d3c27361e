// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Whether a theme of this name that has folders of icons is installed below the search paths.
bool isIconTheme(const QStringList &searchPaths, const QString &name);

/// The icon theme below the search paths that is most likely to have an icon for every program;
/// empty where no theme is installed.
QString richestIconTheme(const QStringList &searchPaths);

} // namespace platform
