// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

/// Qt's message handler while main() creates the application object. Does what qtMessageHandler()
/// does. At a fatal message, at which Qt would abort, it ends the program with status 1. Before
/// that it prints one line if no display answers, and otherwise, such as for a platform plug-in
/// that cannot be loaded, all that Qt has said from the start.
void startMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
