// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppSearch.h"

#include "core/ResultRecord.h"
#include "launcher/AppEntry.h"

namespace {

bool contains(const QString &text, const QString &query)
{
    return text.indexOf(query, 0, Qt::CaseSensitive) != -1;
}

bool matches(const AppEntry &app, const QString &query)
{
    return contains(app.lowerName, query) || contains(app.lowerDescription, query)
           || contains(app.pinyin, query) || contains(app.pinyinInitials, query);
}

} // namespace

QVariantList searchApps(const QList<AppEntry> &apps, const QString &query)
{
    const QString lowerQuery = query.trimmed().toLower();
    QVariantList records;
    for (const AppEntry &app : apps) {
        if (lowerQuery.isEmpty() || matches(app, lowerQuery)) {
            records.append(makeProgramRecord(app.name, app.path, app.iconPath, app.description));
        }
    }
    return records;
}
