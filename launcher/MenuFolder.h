// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// The start-menu files and the subfolders of a folder, each sorted by name, ignoring case.
struct MenuFolder
{
    QStringList links;      ///< absolute paths
    QStringList subfolders; ///< names
};

/// Reads a folder of the start menu. Empty if it cannot be read.
MenuFolder readMenuFolder(const QString &path);
