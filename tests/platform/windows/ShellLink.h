// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The content of a link file.
struct ShellLink
{
    QString target;
    QString arguments;
    QString folder;   ///< the working directory
    QString iconFile; ///< empty for the target's own icon

    /// Writes the link through the shell's own interface. Returns false if the shell refuses.
    bool write(const QString &filePath) const;
};
