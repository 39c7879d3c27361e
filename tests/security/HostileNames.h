// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// 200 names that somebody else may have chosen for a file or a program, or typed. Most would run
/// the command "touch canary", hide a part of themselves, or count as an option, if they went
/// through a shell, an expansion or a parser that does not treat them as names. None has a slash.
inline QStringList hostileNames()
{
    const QStringList hearts = {
        QStringLiteral("\"quoted\""),
        QStringLiteral("'single'"),
        QStringLiteral("two  words"),
        QStringLiteral("$(touch canary)"),
        QStringLiteral("`touch canary`"),
        QStringLiteral(";touch canary;"),
        QStringLiteral("&& touch canary &&"),
        QStringLiteral("| touch canary"),
        QStringLiteral("\ntouch canary\n"),
        QStringLiteral("100%PATH%"),
        QStringLiteral("%f %U %% %k"),
        QStringLiteral("-rf"),
        QStringLiteral("--help=canary"),
        QStringLiteral("invoice\u202efdp.exe"),
        QStringLiteral("\u2066isolated\u2069\u200f"),
        QStringLiteral("\U0001f600\u7b14\u8bb0"),
        QStringLiteral("back\\slashes\\n\\\\"),
        QStringLiteral("~ $HOME ${HOME} !!"),
        QStringLiteral("*?[a]{b,c}"),
        QStringLiteral("#1&lt;a=b+c&d?e"),
    };
    const QStringList frames = {
        QStringLiteral("%1"),   QStringLiteral(" %1"),      QStringLiteral("%1 "),
        QStringLiteral("-%1"),  QStringLiteral("a%1b"),     QStringLiteral("%1.txt"),
        QStringLiteral("%1%1"), QStringLiteral("\u00e9%1"), QStringLiteral("it's %1"),
        QStringLiteral("%1;x"),
    };
    QStringList names;
    for (const QString &heart : hearts) {
        for (const QString &frame : frames) {
            names.append(QString(frame).replace(QStringLiteral("%1"), heart));
        }
    }
    return names;
}
