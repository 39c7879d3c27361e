// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "commands/CommandFolder.h"

namespace commandfolder {

/// A command whose program carries out the steps, on every system; see steps.cpp.
inline CommandFile steps(const QStringList &steps)
{
    return command(QStringList(QStringLiteral(STEPS_PROGRAM)) + steps);
}

/// The text with line feeds alone; Windows programs also print a carriage return.
inline QByteArray withoutReturns(QByteArray text)
{
    return text.replace("\r\n", "\n");
}

} // namespace commandfolder
