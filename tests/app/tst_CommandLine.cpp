// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLine.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Error = CommandLine::Error;
using Verb = InstanceRequest::Verb;

namespace {

CommandLine parse(const QStringList &options)
{
    return CommandLine::parse(QStringList{u"Vaskel"_s} + options);
}

} // namespace

class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksNothingWithoutAnOption();
    void readsARequest_data();
    void readsARequest();
    void takesAnyTextOfAQuery_data();
    void takesAnyTextOfAQuery();
    void readsHelpAndVersion();
    void leavesTheOptionsOfQt_data();
    void leavesTheOptionsOfQt();
    void findsTheError_data();
    void findsTheError();
    void takesTheLongestTextAndNoLongerOne();
    void readsTheArgumentsOfMain();
    void asksForACheckByTheFirstArgument();
    void leavesTheArgumentsOfACheck();
};

void tst_CommandLine::asksNothingWithoutAnOption()
{
    const CommandLine line = parse({});
    QCOMPARE(line.error, Error::None);
    QVERIFY(!line.request && !line.wantsHelp && !line.wantsVersion);
    QVERIFY(line.ownArguments.isEmpty());
    QCOMPARE(CommandLine::parse(QStringList()).error, Error::None);
}

void tst_CommandLine::readsARequest_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<Verb>("verb");
    QTest::newRow("toggle") << u"--toggle"_s << Verb::Toggle;
    QTest::newRow("show") << u"--show"_s << Verb::Show;
    QTest::newRow("hide") << u"--hide"_s << Verb::Hide;
    QTest::newRow("quit") << u"--quit"_s << Verb::Quit;
}

void tst_CommandLine::readsARequest()
{
    QFETCH(const QString, option);
    QFETCH(const Verb, verb);
    const CommandLine line = parse({option});
    QCOMPARE(line.error, Error::None);
    QVERIFY(line.request);
    QCOMPARE(line.request->verb, verb);
    QCOMPARE(line.ownArguments, QList<int>{1});
}

void tst_CommandLine::takesAnyTextOfAQuery_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a word") << u"fire"_s;
    QTest::newRow("blanks") << u" calc  1 "_s;
    QTest::newRow("nothing") << u""_s;
    QTest::newRow("an option") << u"--quit"_s;
    QTest::newRow("an option of Qt") << u"-platform"_s;
    QTest::newRow("Chinese") << u"计算器"_s;
}

void tst_CommandLine::takesAnyTextOfAQuery()
{
    QFETCH(const QString, text);
    const CommandLine line = parse({u"-style"_s, u"fusion"_s, u"--query"_s, text});
    QCOMPARE(line.error, Error::None);
    QVERIFY(line.request);
    QCOMPARE(line.request->verb, Verb::Query);
    QCOMPARE(line.request->text, text);
    QCOMPARE(line.ownArguments, (QList<int>{3, 4}));
}

void tst_CommandLine::readsHelpAndVersion()
{
    QVERIFY(parse({u"--help"_s}).wantsHelp);
    QVERIFY(!parse({u"--help"_s}).wantsVersion);
    QVERIFY(parse({u"--version"_s}).wantsVersion);
    QVERIFY(parse({u"--show"_s, u"--help"_s}).wantsHelp);
}

void tst_CommandLine::leavesTheOptionsOfQt_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("platform") << QStringList{u"-platform"_s, u"offscreen"_s};
    QTest::newRow("two dashes") << QStringList{u"--platform"_s, u"offscreen"_s};
    QTest::newRow("a value that looks like a request") << QStringList{u"-title"_s, u"--quit"_s};
    QTest::newRow("a value after the sign") << QStringList{u"-style=fusion"_s};
    QTest::newRow("no value") << QStringList{u"-reverse"_s, u"--widgetcount"_s};
    QTest::newRow("session") << QStringList{u"-session"_s, u"1_2"_s, u"-name"_s, u"x"_s};
    QTest::newRow("a value that is missing") << QStringList{u"-display"_s};
}

void tst_CommandLine::leavesTheOptionsOfQt()
{
    QFETCH(const QStringList, options);
    const CommandLine line = parse(options);
    QCOMPARE(line.error, Error::None);
    QVERIFY(!line.request);
    QVERIFY(line.ownArguments.isEmpty());
}

void tst_CommandLine::findsTheError_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<Error>("error");
    QTest::addColumn<QString>("culprit");

    const auto add = [](const QStringList &options, Error error, const QString &culprit) {
        QTest::newRow(qPrintable(options.join(u' '))) << options << error << culprit;
    };
    add({u"--frob"_s}, Error::UnknownOption, u"--frob"_s);
    add({u"-toggle"_s}, Error::UnknownOption, u"-toggle"_s);
    add({u"--Toggle"_s}, Error::UnknownOption, u"--Toggle"_s);
    add({u"--show=1"_s}, Error::UnknownOption, u"--show=1"_s);
    add({u"-reverse=1"_s}, Error::UnknownOption, u"-reverse=1"_s);
    add({u"---platform"_s}, Error::UnknownOption, u"---platform"_s);
    add({u"-"_s}, Error::UnknownOption, u"-"_s);
    add({u"--"_s}, Error::UnknownOption, u"--"_s);
    add({u"-h"_s}, Error::UnknownOption, u"-h"_s);
    add({u"--show"_s, u"--frob"_s}, Error::UnknownOption, u"--frob"_s);
    add({u"toggle"_s}, Error::UnexpectedArgument, u"toggle"_s);
    add({u"--query"_s, u"two"_s, u"words"_s}, Error::UnexpectedArgument, u"words"_s);
    add({u"--query"_s}, Error::MissingText, u"--query"_s);
    add({u"--show"_s, u"--hide"_s}, Error::TwoRequests, u"--hide"_s);
    add({u"--show"_s, u"--show"_s}, Error::TwoRequests, u"--show"_s);
    add({u"--frob"_s, u"--show"_s, u"--hide"_s}, Error::UnknownOption, u"--frob"_s);
}

void tst_CommandLine::findsTheError()
{
    QFETCH(const QStringList, options);
    QFETCH(const Error, error);
    QFETCH(const QString, culprit);
    const CommandLine line = parse(options);
    QCOMPARE(line.error, error);
    QCOMPARE(line.culprit, culprit);
}

void tst_CommandLine::takesTheLongestTextAndNoLongerOne()
{
    // Each character takes three bytes.
    const QString longest(1363, u'计');
    QCOMPARE(parse({u"--query"_s, longest}).error, Error::None);
    QCOMPARE(parse({u"--query"_s, longest + u"xx"_s}).error, Error::TooLong);
}

void tst_CommandLine::readsTheArgumentsOfMain()
{
    const char *const arguments[] = {"Vaskel", "--query", "fire fox", nullptr};
    const CommandLine line = CommandLine::parse(3, arguments);
    QVERIFY(line.request);
    QCOMPARE(line.request->text, u"fire fox"_s);
}

void tst_CommandLine::asksForACheckByTheFirstArgument()
{
    const char *const check[] = {"Vaskel", "--check-command", "folder"};
    QVERIFY(CommandLine::parse(3, check).wantsCheck);
    QVERIFY(!CommandLine::parse(1, check).wantsCheck);
    const char *const other[] = {"Vaskel", "folder", "--check-command"};
    QVERIFY(!CommandLine::parse(3, other).wantsCheck);
}

void tst_CommandLine::leavesTheArgumentsOfACheck()
{
    const CommandLine line = parse({u"--check-command"_s, u"folder"_s, u"--help"_s, u"--frob"_s});
    QVERIFY(line.wantsCheck);
    QCOMPARE(line.error, Error::None);
    QVERIFY(!line.request && !line.wantsHelp && !line.wantsVersion);
}

VASKEL_TEST(tst_CommandLine, QCoreApplication)
#include "tst_CommandLine.moc"
