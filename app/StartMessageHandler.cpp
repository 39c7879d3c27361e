// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StartMessageHandler.h"

#include "app/Logger.h"
#include "app/Translation.h"
#include "platform/Console.h"

#include <QCoreApplication>
#include <QTranslator>

#include <cstdlib>

using namespace Qt::StringLiterals;

void startMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type != QtFatalMsg) {
        qtMessageHandler(type, context, message);
        return;
    }
    QTranslator translator;
    installTranslation(translator);
    const QString text =
        QCoreApplication::translate("CommandLine", "There is no display to show a window on.");
    qtMessageHandler(QtCriticalMsg, context, text);
    platform::writeToConsole(platform::ConsoleStream::Errors, "Vaskel: "_L1 + text + u'\n');
    // The destructors of an application object that is only half constructed cannot run.
    std::_Exit(EXIT_FAILURE);
}
