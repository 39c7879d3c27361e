// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

/// Qt's message handler while main() creates the application object. Does what qtMessageHandler()
/// does, and ends the program with status 1 at a fatal message, after which Qt would abort it. Then
/// it prints one line if no display answers. If something else fails, such as the loading of a
/// platform plug-in, it prints what Qt has said since then.
void startMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
