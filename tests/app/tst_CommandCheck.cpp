// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandCheck.h"

#include "commands/Steps.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QTest>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

struct Printed
{
    int status = -1;
    QString output;
    QString errors;
};

Printed check(const QString &folder, const QString &text = {})
{
    Printed printed;
    QTextStream output(&printed.output);
    QTextStream errors(&printed.errors);
    printed.status = commandcheck::check(folder, text, output, errors);
    return printed;
}

// A folder whose program carries out the steps.
QString writeCommand(const QStringList &steps)
{
    QJsonObject file = commandfolder::smallestFile(u"mine"_s);
    file["exec"_L1] = QJsonArray::fromStringList(commandfolder::steps(steps).exec);
    return commandfolder::write(u"script"_s, file);
}

} // namespace

class tst_CommandCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void printsTheRows();
    void reportsAWrongFile();
    void reportsABuiltInCommand();
    void reportsAProgramThatFails();
    void reportsAProgramThatCannotBeStarted();
    void reportsAWrongAnswer();
};

void tst_CommandCheck::printsTheRows()
{
    const QString folder = writeCommand(
        {u"print"_s,
         uR"x({"items": [{"title": "({query})", "subtitle": "First", "arg": "1",)x"
         R"x( "icon": {"path": "a.png"}, "autocomplete": "b"}, {"title": "two", "valid": false}]})x"_s});
    const Printed printed = check(folder, u" a b "_s);
    QCOMPARE(printed.errors, QString());
    QCOMPARE(printed.output, "(a b)\n    subtitle: First\n    icon: "_L1 + folder
                                 + "/a.png\n    autocomplete: b\n    Enter: copy 1\n"
                                   "two\n    Enter: nothing\n"_L1);
    QCOMPARE(printed.status, 0);
}

void tst_CommandCheck::reportsAWrongFile()
{
    const QString folder = commandfolder::write(u"a"_s, {});
    const Printed printed = check(folder);
    QCOMPARE(printed.status, 1);
    QCOMPARE(printed.output, QString());
    QCOMPARE(printed.errors, QDir::toNativeSeparators(folder + "/command.json"_L1)
                                 + ": command: expected a string that is not empty\n"_L1);
}

void tst_CommandCheck::reportsABuiltInCommand()
{
    const QString folder = commandfolder::write(u"a"_s, commandfolder::smallestFile(u"calc"_s));
    const Printed printed = check(folder);
    QCOMPARE(printed.status, 1);
    QCOMPARE(printed.output, QString());
    QCOMPARE(printed.errors,
             QDir::toNativeSeparators(folder + "/command.json"_L1)
                 + ": command: expected a command that is not built in, not \"calc\"\n"_L1);
}

void tst_CommandCheck::reportsAProgramThatFails()
{
    const Printed printed = check(writeCommand({u"error"_s, u"no network"_s, u"exit"_s, u"3"_s}));
    QCOMPARE(printed.status, 1);
    QCOMPARE(printed.errors,
             QStringLiteral(STEPS_PROGRAM) + " has ended with status 3\nno network\n"_L1);
}

void tst_CommandCheck::reportsAProgramThatCannotBeStarted()
{
    const QString folder = commandfolder::write(u"a"_s, commandfolder::smallestFile(u"mine"_s));
    const Printed printed = check(folder);
    QCOMPARE(printed.status, 1);
    QCOMPARE(printed.errors, u"./program cannot be started\nThere is no such program.\n"_s);
}

void tst_CommandCheck::reportsAWrongAnswer()
{
    const Printed printed = check(writeCommand({u"print"_s, u"[]"_s}));
    QCOMPARE(printed.status, 1);
    QCOMPARE(printed.errors, u"The answer is no JSON object with a list \"items\".\n"_s);
}

VASKEL_TEST(tst_CommandCheck, QCoreApplication)
#include "tst_CommandCheck.moc"
