// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QDate;
class QString;

/// Removes the log files of the folder, "Vaskel_<year>-<month>-<day>.log", whose name is of a day
/// more than seven days before today. All other files stay; so do those that cannot be removed.
void removeExpiredLogs(const QString &folder, QDate today);
