// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QObject;

/// The index of all file names that another program maintains: "Everything" on Windows, plocate on
/// Linux. FilePlugin calls it on the GUI thread.
namespace platform::fileindex {

/// The error if Everything does not run, EVERYTHING_ERROR_IPC of its SDK. Never on Linux.
inline constexpr unsigned serviceUnreachable = 2;

/// The answer to a search.
struct Answer
{
    /// The error; without a value the search succeeded. On Windows it is the error number of the
    /// Everything library. On Linux: 101, plocate cannot be started; 102, it failed; 103, it took
    /// too long; 104, the system has no database, and the one of the home folder is not yet
    /// complete; 105, that database cannot be built.
    std::optional<unsigned> error;

    /// The full paths of the files and folders found, in the order of the index; none after an
    /// error. A path is empty if it cannot be read, or is not valid Unicode and so cannot be
    /// opened. On Windows a path ends after 1023 UTF-16 units.
    QStringList paths;
};

/// The name of the index for the user. Empty if none is installed; every search then fails.
QString name();

/// Calls back when a database is complete that the last search found incomplete (error 104), as
/// long as the context lives: the same search then succeeds. Never calls back for a build that
/// fails, and never on Windows.
void watch(QObject *context, const std::function<void()> &completed);

/// Searches for the text and waits for the answer, on Linux for at most two seconds. Returns at
/// most `limit` paths; FilePlugin asks for 50.
///
/// The text has the syntax of the index and is passed on unchanged, including blanks. On Linux it
/// is a list of words. A file name must contain them all; with a slash in the text, the whole path
/// must. Case does not matter. A word with "*" or "?" is a pattern for the whole name. No other
/// character is special.
Answer search(const QString &text, unsigned limit);

} // namespace platform::fileindex
