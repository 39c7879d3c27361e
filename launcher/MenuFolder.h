// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// Start-menu files and subfolders of a folder, each by name, ignoring case.
struct MenuFolder
{
    QStringList links;      ///< absolute paths
    QStringList subfolders; ///< names
};

/// Reads a folder of the start menu. Empty if it cannot be read.
MenuFolder readMenuFolder(const QString &path);
