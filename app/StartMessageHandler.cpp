// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StartMessageHandler.h"

#include "app/ExitStatus.h"
#include "app/Logger.h"
#include "app/Translation.h"
#include "platform/Console.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTranslator>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

bool isAboutDisplay(const QString &message)
{
    return message.startsWith("could not connect to display"_L1) // X11
           || message.startsWith("Failed to create wl_display"_L1);
}

bool isAboutPlugin(const QString &message)
{
    return message.contains("the Qt platform plugin"_L1);
}

// Qt's fatal message is the same for every cause; an earlier message tells the cause. The first one
// counts: of several platform plug-ins, Qt tries the desktop's first.
bool isDisplayMissing(const QStringList &messages)
{
    const auto cause = std::find_if(messages.begin(), messages.end(), [](const QString &message) {
        return isAboutDisplay(message) || isAboutPlugin(message);
    });
    return cause != messages.end() && isAboutDisplay(*cause);
}

QString failureText(const QStringList &messages)
{
    QTranslator translator;
    installTranslation(translator);
    if (isDisplayMissing(messages)) {
        return QCoreApplication::translate("CommandLine",
                                           "There is no display to show a window on.");
    }
    return QCoreApplication::translate("CommandLine", "The start failed. Qt says:") + u'\n'
           + messages.join(u'\n');
}

} // namespace

void startMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    thread_local QStringList messages;
    qtMessageHandler(type, context, message);
    if (type != QtDebugMsg) {
        messages.append(message.trimmed());
    }
    if (type != QtFatalMsg) {
        return;
    }
    const QString text = failureText(messages);
    qtMessageHandler(QtCriticalMsg, context, text.section(u'\n', 0, 0));
    platform::writeToConsole(platform::ConsoleStream::Errors, "Vaskel: "_L1 + text + u'\n');
    // The destructors of an application object that is only half constructed cannot run.
    std::_Exit(exitstatus::failed);
}
