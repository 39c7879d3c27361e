// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The index of the names of all files, kept by a program of its own: "Everything" on Windows,
/// plocate on Linux. There is one query at a time for the whole process, on the GUI thread: set
/// the text, the maximum and the flags, run the query, read its results, reset.
namespace platform::fileindex {

/// The request flag for full paths, the one thing that a result can carry here.
inline constexpr unsigned requestFullPath = 4;

/// The lastError() of an index whose service does not run.
inline constexpr unsigned serviceUnreachable = 2;

/// What its users call the index. Empty where none is installed: then every query fails.
QString name();

/// Sets what is searched for, in the index's own syntax. On Linux these are words that a name must
/// hold, all of them, whatever their case; with a slash in the text they are looked for in the
/// whole path. A word with "*" or "?" is a pattern for the whole name. Nothing else is special.
void setSearchText(const QString &text);

/// Sets how many results a query gives at most.
void setMaximum(unsigned count);

/// Sets what each result carries; see requestFullPath.
void setRequestFlags(unsigned flags);

/// Runs the query and waits for its end, on Linux for two seconds at most. False when it failed.
bool query();

/// Why the last query failed, or 0. The numbers of Windows are those of the Everything library.
/// Those of Linux: 101, plocate cannot be started; 102, it failed; 103, it took too long; 104, the
/// system has no database and that of the home folder is still being built; 105, the latter cannot
/// be built.
unsigned lastError();

unsigned resultCount();

/// The full path of one result, counted from 0. Empty where there is none, where full paths were
/// not requested, and where the name is not valid Unicode, so that no program could be given it.
QString resultPath(unsigned index);

/// Forgets the query and its results.
void reset();

} // namespace platform::fileindex
