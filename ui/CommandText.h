// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

/// The text of the command box, taken apart at its first blank (U+0020 and no other).
struct CommandText
{
    QString command; ///< what stands before the blank; empty for a text that begins with one
    std::optional<QString> arguments; ///< what stands behind it, untrimmed; unset without a blank

    /// The text as it was before the split.
    QString joined() const;
};

CommandText splitCommandText(const QString &text);
