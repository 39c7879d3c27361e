// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLineAnswer.h"

#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QTest>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// The arguments of main().
class Arguments
{
public:
    explicit Arguments(const QList<QByteArray> &options)
        : m_bytes(QList<QByteArray>{"Vaskel"} + options)
        , count(int(m_bytes.size()))
    {
        for (QByteArray &bytes : m_bytes) {
            values.push_back(bytes.data());
        }
        values.push_back(nullptr);
    }

private:
    QList<QByteArray> m_bytes;

public:
    int count;
    std::vector<char *> values;
};

std::optional<int> answer(const QList<QByteArray> &options)
{
    Arguments arguments(options);
    const CommandLine line = CommandLine::parse(arguments.count, arguments.values.data());
    return commandlineanswer::answer(line, arguments.count, arguments.values.data());
}

} // namespace

class tst_CommandLineAnswer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void printsTheHelp();
    void printsTheVersion();
    void printsAnError_data();
    void printsAnError();
    void printsTheUsageOfACheck();
    void checksACommand();
    void startsTheProgramWhereNoneRuns_data();
    void startsTheProgramWhereNoneRuns();
    void tellsThatNoneRuns_data();
    void tellsThatNoneRuns();
    void keepsTheArgumentsOfQt();
};

void tst_CommandLineAnswer::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
}

void tst_CommandLineAnswer::printsTheHelp()
{
    QCOMPARE(answer({"--help"}), 0);
    QVERIFY(fakePlatform().consoleErrors.isEmpty());
    const QString help = fakePlatform().consoleOutput;
    QVERIFY(help.startsWith("Usage: Vaskel ["_L1));
    QVERIFY(help.endsWith(u'\n'));
    for (const QString &option : {u"--toggle"_s, u"--show"_s, u"--hide"_s, u"--query TEXT"_s,
                                  u"--quit"_s, u"--version"_s, u"--help"_s}) {
        QVERIFY2(help.contains("\n  "_L1 + option), qPrintable(option));
    }
}

void tst_CommandLineAnswer::printsTheVersion()
{
    QCOMPARE(answer({"--version"}), 0);
    QCOMPARE(fakePlatform().consoleOutput, "Vaskel " VASKEL_VERSION "\n"_L1);
    QVERIFY(fakePlatform().consoleErrors.isEmpty());
}

void tst_CommandLineAnswer::printsAnError_data()
{
    QTest::addColumn<QList<QByteArray>>("options");
    QTest::addColumn<QString>("line");
    QTest::newRow("unknown") << QList<QByteArray>{"--frob"} << u"Vaskel: Unknown option: --frob"_s;
    QTest::newRow("unexpected") << QList<QByteArray>{"show"}
                                << u"Vaskel: Unexpected argument: show"_s;
    QTest::newRow("no text") << QList<QByteArray>{"--query"}
                             << u"Vaskel: A text must follow --query."_s;
    QTest::newRow("too long") << QList<QByteArray>{"--query", QByteArray(5000, 'x')}
                              << u"Vaskel: The text after --query is too long."_s;
    QTest::newRow("two") << QList<QByteArray>{"--show", "--hide"}
                         << u"Vaskel: --hide cannot follow another such option."_s;
    QTest::newRow("after help") << QList<QByteArray>{"--help", "--frob"}
                                << u"Vaskel: Unknown option: --frob"_s;
}

void tst_CommandLineAnswer::printsAnError()
{
    QFETCH(const QList<QByteArray>, options);
    QFETCH(const QString, line);
    QCOMPARE(answer(options), 2);
    QVERIFY(fakePlatform().consoleOutput.isEmpty());
    QCOMPARE(fakePlatform().consoleErrors,
             line + "\nThe options are listed by: Vaskel --help\n"_L1);
}

void tst_CommandLineAnswer::printsTheUsageOfACheck()
{
    QCOMPARE(answer({"--check-command"}), 2);
    QCOMPARE(answer({"--check-command", "folder", "a", "text"}), 2);
    const QString usage = u"usage: Vaskel --check-command FOLDER [TEXT]\n"_s;
    QCOMPARE(fakePlatform().consoleErrors, usage + usage);
    QVERIFY(fakePlatform().consoleOutput.isEmpty());
}

void tst_CommandLineAnswer::checksACommand()
{
    QCOMPARE(answer({"--check-command", "/nonexistent"}), 1);
    QVERIFY(fakePlatform().consoleErrors.endsWith(": expected a regular file\n"_L1));
    QVERIFY(fakePlatform().consoleOutput.isEmpty());
}

void tst_CommandLineAnswer::startsTheProgramWhereNoneRuns_data()
{
    QTest::addColumn<QList<QByteArray>>("options");
    QTest::newRow("nothing") << QList<QByteArray>();
    QTest::newRow("of Qt") << QList<QByteArray>{"-platform", "offscreen"};
    QTest::newRow("toggle") << QList<QByteArray>{"--toggle"};
    QTest::newRow("show") << QList<QByteArray>{"--show"};
    QTest::newRow("query") << QList<QByteArray>{"--query", "x"};
}

void tst_CommandLineAnswer::startsTheProgramWhereNoneRuns()
{
    QFETCH(const QList<QByteArray>, options);
    QCOMPARE(answer(options), std::nullopt);
    QVERIFY(fakePlatform().consoleErrors.isEmpty());
}

void tst_CommandLineAnswer::tellsThatNoneRuns_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::newRow("hide") << "--hide"_ba;
    QTest::newRow("quit") << "--quit"_ba;
}

void tst_CommandLineAnswer::tellsThatNoneRuns()
{
    QFETCH(const QByteArray, option);
    QCOMPARE(answer({option}), 1);
    QCOMPARE(fakePlatform().consoleErrors, "Vaskel: Vaskel is not running.\n"_L1);
}

void tst_CommandLineAnswer::keepsTheArgumentsOfQt()
{
    Arguments arguments({"-style", "fusion", "--query", "-platform", "-reverse"});
    const CommandLine line = CommandLine::parse(arguments.count, arguments.values.data());
    commandlineanswer::keepQtArguments(line, arguments.count, arguments.values.data());
    QCOMPARE(arguments.count, 4);
    const QList<QByteArray> expected{"Vaskel", "-style", "fusion", "-reverse"};
    for (int i = 0; i < arguments.count; ++i) {
        QCOMPARE(QByteArray(arguments.values.at(size_t(i))), expected.at(i));
    }
    QVERIFY(!arguments.values.at(4));
}

namespace {

// The answers create an application object of their own.
int runWithoutApplication(int argc, char *argv[])
{
    tst_CommandLineAnswer test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace

VASKEL_TEST_WITH_MAIN(tst_CommandLineAnswer, runWithoutApplication)
#include "tst_CommandLineAnswer.moc"
