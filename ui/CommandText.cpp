// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CommandText.h"

QString CommandText::joined() const
{
    return arguments ? command + u' ' + *arguments : command;
}

CommandText splitCommandText(const QString &text)
{
    const qsizetype blank = text.indexOf(u' ');
    if (blank < 0) {
        return {text, std::nullopt};
    }
    return {text.left(blank), text.mid(blank + 1)};
}
