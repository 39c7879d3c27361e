// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/LogRetention.h"

#include <QDate>
#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr int daysKept = 7;

// Not valid if the name has no date, or none that exists.
QDate dateOf(const QString &fileName)
{
    static const QRegularExpression pattern(
        QRegularExpression::anchoredPattern(uR"(Vaskel_(\d{4})-(\d{2})-(\d{2})\.log)"));
    const QRegularExpressionMatch match = pattern.match(fileName);
    return {match.capturedView(1).toInt(), match.capturedView(2).toInt(),
            match.capturedView(3).toInt()};
}

} // namespace

void removeExpiredLogs(const QString &folder, QDate today)
{
    QDir dir(folder);
    const QStringList names = dir.entryList({u"Vaskel_*.log"_s}, QDir::Files);
    for (const QString &name : names) {
        // There are no days to a date that is not valid.
        if (dateOf(name).daysTo(today) > daysKept) {
            dir.remove(name);
        }
    }
}
