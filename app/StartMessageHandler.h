// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

/// Qt's message handler while main() creates the application object. Does what qtMessageHandler()
/// does, except for a fatal message, which Qt sends if no display answers, and after which it would
/// abort the program: prints one line about that instead, and ends the program with status 1.
void startMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
