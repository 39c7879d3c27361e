// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/ScriptProcess.h"

#include "commands/Steps.h"
#include "support/RunningProcess.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <memory>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

struct Outcome
{
    QByteArray output;
    QString error;
    QString details;
};

// Runs the program of the file until it ends.
Outcome run(const CommandFile &file, const QString &query = {})
{
    auto *process = new ScriptProcess(file); // deletes itself
    QSignalSpy finished(process, &ScriptProcess::finished);
    process->start(query);
    if (finished.isEmpty() && !finished.wait(60'000)) {
        return {{}, u"no end"_s, {}};
    }
    const QList<QVariant> arguments = finished.takeFirst();
    return {arguments[0].toByteArray(), arguments[1].toString(), arguments[2].toString()};
}

QByteArray outputOf(const CommandFile &file, const QString &query = {})
{
    const Outcome outcome = run(file, query);
    return commandfolder::withoutReturns(outcome.error.isEmpty() ? outcome.output
                                                                 : outcome.error.toUtf8());
}

QByteArray outputOfScript(const QByteArray &lines)
{
    return outputOf(commandfolder::script(lines));
}

// The process ID in a file that a program has written into its folder; 0 without the file.
qint64 processIn(const QString &name)
{
    QFile file(testhome::path() + "/script/"_L1 + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toLongLong() : 0;
}

} // namespace

class tst_ScriptProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void passesTheTextWithoutAShell();
    void putsTheTextIntoLongerArguments();
    void runsInTheFolder();
    void findsAProgramInItsFolder();
    void findsAProgramOnThePath();
    void hasAnEmptyStandardInput();
    void hasNoTerminal();
    void inheritsNoOpenFile();
    void reportsAMissingProgram();
    void reportsAFileThatIsNotExecutable();
    void reportsTheExitStatus();
    void reportsACrash();
    void endsAProgramThatDoesNotAnswer();
    void endsAProgramThatPrintsWithoutEnd();
    void survivesErrorsWithoutEnd();
    void endsAChildThatStaysBehind();
    void abandonEndsTheProgramAndItsChildren();
    void deletionEndsTheProgramAndItsChildren();
};

void tst_ScriptProcess::passesTheTextWithoutAShell()
{
    const QString query = u"a  'b' \"c\" $HOME %PATH% `id` ; & | {query} *\\ \\\" -n ^ ü"_s;
    QCOMPARE(outputOf(commandfolder::steps({u"arguments"_s, u"{query}"_s}), query),
             query.toUtf8() + '\n');
    QCOMPARE(outputOf(commandfolder::steps({u"arguments"_s, u"{query}"_s})), QByteArray("\n"));
}

void tst_ScriptProcess::putsTheTextIntoLongerArguments()
{
    const CommandFile file =
        commandfolder::steps({u"arguments"_s, u"--text={query}"_s, u"{query}{query}"_s, u"end"_s});
    QCOMPARE(outputOf(file, u"a b"_s), QByteArray("--text=a b\na ba b\nend\n"));
}

void tst_ScriptProcess::runsInTheFolder()
{
    const CommandFile file = commandfolder::steps({u"folder"_s});
    QCOMPARE(QString::fromUtf8(outputOf(file).trimmed()), QDir(file.folder).canonicalPath());
}

void tst_ScriptProcess::findsAProgramInItsFolder()
{
    CommandFile file = commandfolder::steps({u"print"_s, u"{query}"_s});
    const QString program = file.exec.first();
    const QString name = QFileInfo(program).fileName();
    QVERIFY(QFile::copy(program, file.folder + u'/' + name));
    file.exec.first() = "./"_L1 + name;
    QCOMPARE(outputOf(file, u"text"_s), QByteArray("text\n"));
}

void tst_ScriptProcess::findsAProgramOnThePath()
{
    CommandFile file = commandfolder::steps({u"print"_s, u"{query}"_s});
    const QFileInfo program(file.exec.first());
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QDir::toNativeSeparators(program.path()).toLocal8Bit());
    file.exec.first() = program.completeBaseName(); // on Windows without ".exe"
    const QByteArray output = outputOf(file, u"text"_s);
    qputenv("PATH", before);
    QCOMPARE(output, QByteArray("text\n"));
}

void tst_ScriptProcess::hasAnEmptyStandardInput()
{
    QCOMPARE(outputOf(commandfolder::steps({u"input"_s, u"print"_s, u"end"_s})),
             QByteArray("end\n"));
}

void tst_ScriptProcess::hasNoTerminal()
{
    // A session of its own has no controlling terminal.
    QCOMPARE(outputOfScript("set -- $(cat /proc/$$/stat); echo $(($6 == $$)) $(($5 == $$)) $7"),
             QByteArray("1 1 0\n"));
}

void tst_ScriptProcess::inheritsNoOpenFile()
{
    // Without O_CLOEXEC, as a library may open a file.
    const int descriptor = ::open("/dev/null", O_RDONLY); // NOLINT(android-cloexec-open)
    QVERIFY(descriptor > STDERR_FILENO);
    const auto guard = qScopeGuard([descriptor] { ::close(descriptor); });
    QCOMPARE(
        outputOfScript("cd /proc/$$/fd; for n in *; do [ $n -gt 2 ] && readlink $n; done; true")
            .replace(testhome::path().toUtf8() + "/script/program\n", {}),
        QByteArray());
}

void tst_ScriptProcess::reportsAMissingProgram()
{
    const Outcome outcome = run(commandfolder::command({u"./none"_s}));
    QCOMPARE(outcome.error, u"./none cannot be started"_s);
    QCOMPARE(outcome.details, u"There is no such program."_s);
    QCOMPARE(run(commandfolder::command({u"no-such-program-anywhere"_s})).details,
             u"There is no such program."_s);
}

void tst_ScriptProcess::reportsAFileThatIsNotExecutable()
{
    const CommandFile file = commandfolder::command({u"./program.txt"_s});
    testhome::writeFile(u"script/program.txt"_s, "no program");
    const Outcome outcome = run(file);
    QCOMPARE(outcome.error, u"./program.txt cannot be started"_s);
    QCOMPARE(outcome.details, u"The file is not executable."_s);
}

void tst_ScriptProcess::reportsTheExitStatus()
{
    const CommandFile file = commandfolder::steps({u"print"_s, u"row"_s, u"error"_s, u"first"_s,
                                                   u"error"_s, u"no network"_s, u"exit"_s, u"3"_s});
    const Outcome outcome = run(file);
    QCOMPARE(outcome.error, file.exec.first() + " has ended with status 3"_L1);
    QCOMPARE(outcome.details, u"no network"_s);
}

void tst_ScriptProcess::reportsACrash()
{
    QCOMPARE(run(commandfolder::script("kill -SEGV $$")).error, u"./program has crashed"_s);
}

void tst_ScriptProcess::endsAProgramThatDoesNotAnswer()
{
    CommandFile file = commandfolder::steps({u"pid"_s, u"pid"_s, u"wait"_s, u"never"_s});
    file.timeoutMs = 1500;
    QCOMPARE(run(file).error, file.exec.first() + " has not answered within 1.5 s"_L1);
    // On a busy machine, the time may be over before the program begins.
    while (processIn(u"pid"_s) == 0 && file.timeoutMs < 60000) {
        file.timeoutMs *= 2;
        run(file);
    }
    const qint64 process = processIn(u"pid"_s);
    QVERIFY(process > 0);
    QTRY_VERIFY(!isRunning(process));
}

void tst_ScriptProcess::endsAProgramThatPrintsWithoutEnd()
{
    const CommandFile file = commandfolder::steps({u"pid"_s, u"pid"_s, u"flood"_s});
    const Outcome outcome = run(file);
    QCOMPARE(outcome.error, file.exec.first() + " has printed more than 1 MiB"_L1);
    const qint64 process = processIn(u"pid"_s);
    QVERIFY(process > 0);
    QTRY_VERIFY(!isRunning(process));
}

void tst_ScriptProcess::survivesErrorsWithoutEnd()
{
    const CommandFile file = commandfolder::steps({u"flood-errors"_s, u"exit"_s, u"1"_s});
    const Outcome outcome = run(file);
    QCOMPARE(outcome.error, file.exec.first() + " has ended with status 1"_L1);
    QCOMPARE(outcome.details, QString(4096, u'x'));
}

void tst_ScriptProcess::endsAChildThatStaysBehind()
{
    // The child keeps the standard output open.
    QCOMPARE(outputOf(commandfolder::steps({u"child"_s, u"child"_s, u"print"_s, u"row"_s})),
             QByteArray("row\n"));
    const qint64 child = processIn(u"child"_s);
    QVERIFY(child > 0);
    QTRY_VERIFY(!isRunning(child));
}

void tst_ScriptProcess::abandonEndsTheProgramAndItsChildren()
{
    const QPointer<ScriptProcess> process =
        new ScriptProcess(commandfolder::steps({u"child"_s, u"child"_s, u"wait"_s, u"never"_s}));
    const QSignalSpy finished(process, &ScriptProcess::finished);
    process->start({});
    QTRY_VERIFY_WITH_TIMEOUT(processIn(u"child"_s) > 0, 60'000);
    const qint64 child = processIn(u"child"_s);
    QVERIFY(isRunning(child));
    process->abandon();
    QTRY_VERIFY(!isRunning(child));
    QTRY_VERIFY(!process);
    QCOMPARE(finished.size(), 0);
}

void tst_ScriptProcess::deletionEndsTheProgramAndItsChildren()
{
    auto process = std::make_unique<ScriptProcess>(
        commandfolder::steps({u"child"_s, u"child"_s, u"wait"_s, u"never"_s}));
    process->start({});
    QTRY_VERIFY_WITH_TIMEOUT(processIn(u"child"_s) > 0, 60'000);
    const qint64 child = processIn(u"child"_s);
    QVERIFY(isRunning(child));
    process.reset();
    QTRY_VERIFY(!isRunning(child));
}

VASKEL_TEST(tst_ScriptProcess, QCoreApplication)
#include "tst_ScriptProcess.moc"
