// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QVariantList>

class QString;
struct AppEntry;

/// The records of the entries that match the query, in the order of the list. AppLauncher::search()
/// says which ones match.
QVariantList searchApps(const QList<AppEntry> &apps, const QString &query);
