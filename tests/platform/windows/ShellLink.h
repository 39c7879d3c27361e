// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What a link file says.
struct ShellLink
{
    QString target;
    QString arguments;
    QString folder;   ///< the working directory
    QString iconFile; ///< empty for the target's own icon

    /// Writes the link through the shell's own interface. False when the shell would not.
    bool write(const QString &filePath) const;
};
