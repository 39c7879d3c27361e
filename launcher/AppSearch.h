// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBitArray>
#include <QList>
#include <QVariantList>

class QString;
struct AppEntry;

/// Returns the records of the matching entries, in the order of the list. AppLauncher::search()
/// tells which entries match.
QVariantList searchApps(const QList<AppEntry> &apps, const QString &query);

/// Returns for each UTF-16 code unit of the name whether a search for the query hits it: the first
/// place that contains the query, or else the characters whose pinyin or initials do. All false for
/// a blank query and for a name that the search does not hit.
QBitArray matchInName(const QString &name, const QString &query);

/// The same for a description or another text, which a search does not compare by pinyin.
QBitArray matchInText(const QString &text, const QString &query);
