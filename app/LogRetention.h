// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QDate;
class QString;

/// Removes the log files "Vaskel_<year>-<month>-<day>.log" of the folder whose date is more than
/// seven days before today. Ignores other files and failures.
void removeExpiredLogs(const QString &folder, QDate today);
