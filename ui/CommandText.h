// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

/// The text of the command box, split at its first blank (U+0020 only).
struct CommandText
{
    QString command;                  ///< before the blank; empty if the text begins with one
    std::optional<QString> arguments; ///< after it, untrimmed; nullopt without a blank

    /// The text as it was before the split.
    QString joined() const;
};

CommandText splitCommandText(const QString &text);
