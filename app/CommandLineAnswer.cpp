// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLineAnswer.h"

#include "app/CommandCheck.h"
#include "app/ExitStatus.h"
#include "app/InstanceChannel.h"
#include "app/Translation.h"
#include "platform/Console.h"

#include <QCoreApplication>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace commandlineanswer {

namespace {

QString helpText()
{
    return QCoreApplication::translate(
        "CommandLine",
        "Usage: Vaskel [--toggle | --show | --hide | --query TEXT | --quit] [--version] [--help]\n"
        "\n"
        "Starts Vaskel, or shows the window of the Vaskel that is running.\n"
        "\n"
        "  --toggle      show the window, or hide it if it shows\n"
        "  --show        show the window\n"
        "  --hide        hide the window\n"
        "  --query TEXT  show the window with this text in its box\n"
        "  --quit        quit Vaskel\n"
        "  --version     print the version\n"
        "  --help        print this help\n"
        "  --check-command FOLDER [TEXT]\n"
        "                check a command of your own, and print its rows for the text\n"
        "\n"
        "If Vaskel is not running, --toggle, --show and --query start it.");
}

QString errorText(const CommandLine &commandLine)
{
    const QString &culprit = commandLine.culprit;
    switch (commandLine.error) {
    case CommandLine::Error::UnknownOption:
        return QCoreApplication::translate("CommandLine", "Unknown option: %1").arg(culprit);
    case CommandLine::Error::UnexpectedArgument:
        return QCoreApplication::translate("CommandLine", "Unexpected argument: %1").arg(culprit);
    case CommandLine::Error::MissingText:
        return QCoreApplication::translate("CommandLine", "A text must follow %1.").arg(culprit);
    case CommandLine::Error::TooLong:
        return QCoreApplication::translate("CommandLine", "The text after %1 is too long.")
            .arg(culprit);
    case CommandLine::Error::TwoRequests:
        return QCoreApplication::translate("CommandLine", "%1 cannot follow another such option.")
            .arg(culprit);
    case CommandLine::Error::None:
        break;
    }
    return {};
}

void print(platform::ConsoleStream stream, const QString &text)
{
    platform::writeToConsole(stream, text + u'\n');
}

void printError(const QString &text)
{
    print(platform::ConsoleStream::Errors, "Vaskel: "_L1 + text);
}

int printAnswer(const CommandLine &commandLine)
{
    if (commandLine.error != CommandLine::Error::None) {
        printError(errorText(commandLine));
        print(platform::ConsoleStream::Errors,
              QCoreApplication::translate("CommandLine", "The options are listed by: %1")
                  .arg("Vaskel --help"_L1));
        return exitstatus::misused;
    }
    print(platform::ConsoleStream::Output,
          commandLine.wantsHelp ? helpText() : u"Vaskel " VASKEL_VERSION ""_s);
    return exitstatus::succeeded;
}

int printFailure(instancechannel::Delivery delivery)
{
    printError(delivery == instancechannel::Delivery::NotRunning
                   ? QCoreApplication::translate("CommandLine", "Vaskel is not running.")
                   : QCoreApplication::translate("CommandLine", "Vaskel does not answer."));
    return exitstatus::failed;
}

/// Calls the function with an application object that loads the translation and needs no display.
template <typename Function> int translated(int argc, char *argv[], const Function &function)
{
    const QCoreApplication app(argc, argv);
    QTranslator translator;
    installTranslation(translator);
    return function();
}

} // namespace

std::optional<int> answer(const CommandLine &commandLine, int argc, char *argv[])
{
    if (commandLine.wantsCheck) {
        // Not argv, which may have lost characters on older versions of Windows.
        return translated(argc, argv,
                          [] { return commandcheck::run(QCoreApplication::arguments()); });
    }
    if (commandLine.error != CommandLine::Error::None || commandLine.wantsHelp
        || commandLine.wantsVersion) {
        return translated(argc, argv, [&] { return printAnswer(commandLine); });
    }
    if (!commandLine.request) {
        return {};
    }
    const InstanceRequest &request = *commandLine.request;
    const instancechannel::Delivery delivery = instancechannel::deliver(request.toMessage());
    if (delivery == instancechannel::Delivery::Delivered) {
        return exitstatus::succeeded;
    }
    if (delivery == instancechannel::Delivery::NotRunning && request.startsProgram()) {
        return {};
    }
    return translated(argc, argv, [&] { return printFailure(delivery); });
}

void keepQtArguments(const CommandLine &commandLine, int &argc, char *argv[])
{
    int kept = 0;
    for (int i = 0; i < argc; ++i) {
        if (!commandLine.ownArguments.contains(i)) {
            argv[kept++] = argv[i];
        }
    }
    argc = kept;
    argv[argc] = nullptr;
}

} // namespace commandlineanswer
