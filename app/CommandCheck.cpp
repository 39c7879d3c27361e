// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandCheck.h"

#include "app/BuiltinPlugins.h"
#include "app/ExitStatus.h"
#include "commands/CommandFile.h"
#include "commands/ScriptAnswer.h"
#include "commands/ScriptProcess.h"
#include "core/ResultRecord.h"
#include "platform/Console.h"
#include "platform/ProcessEnvironment.h"

#include <QEventLoop>
#include <QTextStream>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Outcome
{
    QByteArray output;
    QString error;
    QString details;
};

Outcome runProgram(const CommandFile &file, const QString &text)
{
    Outcome outcome;
    QEventLoop loop;
    auto *process = new ScriptProcess(file); // deletes itself
    QObject::connect(
        process, &ScriptProcess::finished, &loop,
        [&](const QByteArray &output, const QString &error, const QString &details) {
            outcome = {output, error, details};
            loop.quit();
        },
        Qt::QueuedConnection); // it may fail before the loop runs
    process->start(text);
    loop.exec();
    return outcome;
}

void printLine(QTextStream &output, const QString &name, const QString &value)
{
    if (!value.isEmpty()) {
        output << "    " << name << ": " << value << '\n';
    }
}

void printRow(QTextStream &output, const QVariantMap &record)
{
    const QVariantMap action = recordAction(record);
    output << recordTitle(record) << '\n';
    printLine(output, u"subtitle"_s, recordSubtitle(record));
    printLine(output, u"icon"_s, recordIcon(record));
    printLine(output, u"autocomplete"_s, recordCompletion(record));
    printLine(output, u"Enter"_s,
              action.isEmpty() ? u"nothing"_s : actionType(action) + u' ' + actionData(action));
}

int printError(QTextStream &errors, const QString &error, const QString &details = {})
{
    errors << error << '\n';
    if (!details.isEmpty()) {
        errors << details << '\n';
    }
    return exitstatus::failed;
}

} // namespace

int commandcheck::run(const QStringList &arguments)
{
    platform::unsetPrivateVariables();
    if (arguments.size() < 3 || arguments.size() > 4) {
        platform::writeToConsole(platform::ConsoleStream::Errors,
                                 u"usage: Vaskel --check-command FOLDER [TEXT]\n"_s);
        return exitstatus::misused;
    }
    QString output;
    QString errors;
    QTextStream outputStream(&output);
    QTextStream errorStream(&errors);
    const int status = check(arguments.at(2), arguments.value(3), outputStream, errorStream);
    outputStream.flush();
    errorStream.flush();
    if (!output.isEmpty()) {
        platform::writeToConsole(platform::ConsoleStream::Output, output);
    }
    if (!errors.isEmpty()) {
        platform::writeToConsole(platform::ConsoleStream::Errors, errors);
    }
    return status;
}

int commandcheck::check(const QString &folder, const QString &text, QTextStream &output,
                        QTextStream &errors)
{
    QString error;
    const std::optional<CommandFile> file = CommandFile::load(folder, error);
    if (!file) {
        return printError(errors, error);
    }
    if (const QString taken = file->errorIfIn(builtinplugins::commands()); !taken.isEmpty()) {
        return printError(errors, taken);
    }
    const Outcome outcome = runProgram(*file, text.trimmed());
    if (!outcome.error.isEmpty()) {
        return printError(errors, outcome.error, outcome.details);
    }
    const ScriptAnswer answer = ScriptAnswer::parse(outcome.output, *file);
    if (!answer.error.isEmpty()) {
        return printError(errors, answer.error);
    }
    for (const QVariant &record : answer.records) {
        printRow(output, record.toMap());
    }
    return exitstatus::succeeded;
}
