// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QVariantList>

class QString;
struct AppEntry;

/// Returns the records of the matching entries, in the order of the list. AppLauncher::search()
/// tells which entries match.
QVariantList searchApps(const QList<AppEntry> &apps, const QString &query);
