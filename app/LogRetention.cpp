// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/LogRetention.h"

#include <QDate>
#include <QDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int daysKept = 7;

// Invalid if the name has no valid date. Avoids regular expressions, here and in the listing:
// nothing else at the start needs them.
QDate dateOf(const QString &fileName)
{
    const QString format = u"'Vaskel_'yyyy-MM-dd'.log'"_s;
    const QDate date = QDate::fromString(fileName, format);
    // fromString() accepts years before 1 and may accept other variants.
    return date.year() > 0 && date.toString(format) == fileName ? date : QDate();
}

} // namespace

void removeExpiredLogs(const QString &folder, QDate today)
{
    QDir dir(folder);
    const QStringList names = dir.entryList(QDir::Files);
    for (const QString &name : names) {
        // daysTo() is 0 for an invalid date.
        if (dateOf(name).daysTo(today) > daysKept) {
            dir.remove(name);
        }
    }
}
