// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/LogRetention.h"

#include <QDate>
#include <QDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int daysKept = 7;

// Not valid if the name has no date, or none that exists. Neither this nor the listing goes by a
// regular expression, which nothing else at the program's start would need.
QDate dateOf(const QString &fileName)
{
    const QString format = u"'Vaskel_'yyyy-MM-dd'.log'"_s;
    const QDate date = QDate::fromString(fileName, format);
    // It takes a year before the first one too, and may forgive more than that.
    return date.year() > 0 && date.toString(format) == fileName ? date : QDate();
}

} // namespace

void removeExpiredLogs(const QString &folder, QDate today)
{
    QDir dir(folder);
    const QStringList names = dir.entryList(QDir::Files);
    for (const QString &name : names) {
        // There are no days to a date that is not valid.
        if (dateOf(name).daysTo(today) > daysKept) {
            dir.remove(name);
        }
    }
}
