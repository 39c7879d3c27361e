// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The index of the names of all files, kept by a program of its own: "Everything" on Windows,
/// plocate on Linux. FilePlugin asks it on the GUI thread.
namespace platform::fileindex {

/// The error of an index whose service does not run.
inline constexpr unsigned serviceUnreachable = 2;

/// What a search gives.
struct Answer
{
    /// Why the search failed; without a value it succeeded. On Windows these are the numbers of the
    /// Everything library, whatever they are. On Linux: 101, plocate cannot be started; 102, it
    /// failed; 103, it took too long; 104, the system has no database and that of the home folder
    /// is still being built; 105, the latter cannot be built.
    std::optional<unsigned> error;

    /// The full path of each hit, a file or a folder, in the index's order. A path is empty where
    /// it cannot be read or is not valid Unicode, so that no program could be given it. There are
    /// none after a failure.
    QStringList paths;
};

/// What its users call the index. Empty where none is installed: then every search fails.
QString name();

/// Searches for the text and waits for the answer, on Linux for two seconds at most. Gives no more
/// than `limit` paths; FilePlugin takes 50.
///
/// The text is in the index's own syntax and is handed over as it is, blanks included. On Linux
/// these are words that a name must hold, all of them, whatever their case; with a slash in the
/// text they are looked for in the whole path. A word with "*" or "?" is a pattern for the whole
/// name. Nothing else is special.
Answer search(const QString &text, unsigned limit);

} // namespace platform::fileindex
