// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/ScriptProcess.h"

#include "commands/CommandFolder.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
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

QByteArray outputOf(const QByteArray &lines, const QString &query = {})
{
    const Outcome outcome = run(commandfolder::script(lines), query);
    return outcome.error.isEmpty() ? outcome.output : outcome.error.toUtf8();
}

// The content of a file that a script writes, relative to the home.
QByteArray readFile(const QString &path)
{
    QFile file(testhome::path() + u'/' + path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Whether a process runs; one that has ended may still wait for its parent.
bool isRunning(pid_t process)
{
    QFile status(u"/proc/%1/stat"_s.arg(process));
    return status.open(QIODevice::ReadOnly) && !status.readAll().contains(") Z ");
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
    const QString query = u"a  'b' \"c\" $HOME `id` ; {query} *\n-n \\ ü"_s;
    QCOMPARE(outputOf("printf %s \"$1\"", query), query.toUtf8());
    QCOMPARE(outputOf("printf %s \"$#\"", QString()), QByteArray("1"));
}

void tst_ScriptProcess::putsTheTextIntoLongerArguments()
{
    CommandFile file = commandfolder::script("printf '%s|' \"$@\"");
    file.exec = QStringList{u"./program"_s, u"--text={query}"_s, u"{query}{query}"_s, u"end"_s};
    QCOMPARE(run(file, u"a b"_s).output, QByteArray("--text=a b|a ba b|end|"));
}

void tst_ScriptProcess::runsInTheFolder()
{
    const QByteArray output = outputOf("pwd -P");
    QCOMPARE(output, QDir(testhome::path() + "/script"_L1).canonicalPath().toUtf8() + '\n');
}

void tst_ScriptProcess::findsAProgramOnThePath()
{
    CommandFile file = commandfolder::script({});
    file.exec = QStringList{u"echo"_s, u"{query}"_s};
    QCOMPARE(run(file, u"text"_s).output, QByteArray("text\n"));
}

void tst_ScriptProcess::hasAnEmptyStandardInput()
{
    QCOMPARE(outputOf("cat; echo end"), QByteArray("end\n"));
}

void tst_ScriptProcess::hasNoTerminal()
{
    // A session of its own has no controlling terminal.
    QCOMPARE(outputOf("set -- $(cat /proc/$$/stat); echo $(($6 == $$)) $(($5 == $$)) $7"),
             QByteArray("1 1 0\n"));
}

void tst_ScriptProcess::inheritsNoOpenFile()
{
    const int descriptor = ::open("/dev/null", O_RDONLY); // without the flag for exec()
    QVERIFY(descriptor > STDERR_FILENO);
    const auto guard = qScopeGuard([descriptor] { ::close(descriptor); });
    QCOMPARE(outputOf("cd /proc/$$/fd; for n in *; do [ $n -gt 2 ] && readlink $n; done; true")
                 .replace(testhome::path().toUtf8() + "/script/program\n", {}),
             QByteArray());
}

void tst_ScriptProcess::reportsAMissingProgram()
{
    CommandFile file = commandfolder::script({});
    file.exec = QStringList{u"./none"_s};
    const Outcome outcome = run(file);
    QCOMPARE(outcome.error, u"./none cannot be started"_s);
    QCOMPARE(outcome.details, u"There is no such program."_s);
    file.exec = QStringList{u"no-such-program-anywhere"_s};
    QCOMPARE(run(file).details, u"There is no such program."_s);
}

void tst_ScriptProcess::reportsAFileThatIsNotExecutable()
{
    const CommandFile file = commandfolder::script({});
    QFile::setPermissions(file.folder + "/program"_L1, QFile::ReadOwner | QFile::WriteOwner);
    const Outcome outcome = run(file);
    QCOMPARE(outcome.error, u"./program cannot be started"_s);
    QCOMPARE(outcome.details, u"The file is not executable."_s);
}

void tst_ScriptProcess::reportsTheExitStatus()
{
    const Outcome outcome =
        run(commandfolder::script("echo row; echo first >&2; echo 'no network' >&2; exit 3"));
    QCOMPARE(outcome.error, u"./program has ended with status 3"_s);
    QCOMPARE(outcome.details, u"no network"_s);
}

void tst_ScriptProcess::reportsACrash()
{
    QCOMPARE(run(commandfolder::script("kill -SEGV $$")).error, u"./program has crashed"_s);
}

void tst_ScriptProcess::endsAProgramThatDoesNotAnswer()
{
    CommandFile file = commandfolder::script("echo $$ > pid; echo row; exec sleep 1000");
    file.timeoutMs = 500;
    const Outcome outcome = run(file);
    QCOMPARE(outcome.error, u"./program has not answered within 0.5 s"_s);
    const QByteArray pid = readFile(u"script/pid"_s).trimmed();
    if (!pid.isEmpty()) { // a busy machine may not have come so far
        QTRY_VERIFY(!isRunning(pid.toInt()));
    }
}

void tst_ScriptProcess::endsAProgramThatPrintsWithoutEnd()
{
    const Outcome outcome = run(commandfolder::script("echo $$ > pid; exec yes"));
    QCOMPARE(outcome.error, u"./program has printed more than 1 MiB"_s);
    const pid_t pid = readFile(u"script/pid"_s).trimmed().toInt();
    QVERIFY(pid > 0);
    QTRY_VERIFY(!isRunning(pid));
}

void tst_ScriptProcess::survivesErrorsWithoutEnd()
{
    const Outcome outcome = run(
        commandfolder::script("yes | head -c 3000000 >&2; printf 'x%.0s' $(seq 9000) >&2; exit 1"));
    QCOMPARE(outcome.error, u"./program has ended with status 1"_s);
    QCOMPARE(outcome.details, QString(4096, u'x'));
}

void tst_ScriptProcess::endsAChildThatStaysBehind()
{
    // The child keeps the standard output open.
    QCOMPARE(outputOf("sleep 1000 & echo $! > child; echo row"), QByteArray("row\n"));
    const pid_t child = readFile(u"script/child"_s).trimmed().toInt();
    QVERIFY(child > 0);
    QTRY_VERIFY(!isRunning(child));
}

void tst_ScriptProcess::abandonEndsTheProgramAndItsChildren()
{
    const QPointer<ScriptProcess> process = new ScriptProcess(
        commandfolder::script("sleep 1000 & echo $! > child; mv child done; wait"));
    const QSignalSpy finished(process, &ScriptProcess::finished);
    process->start({});
    QTRY_VERIFY(!readFile(u"script/done"_s).isEmpty());
    const pid_t child = readFile(u"script/done"_s).trimmed().toInt();
    QVERIFY(isRunning(child));
    process->abandon();
    QTRY_VERIFY(!isRunning(child));
    QTRY_VERIFY(!process);
    QCOMPARE(finished.size(), 0);
}

void tst_ScriptProcess::deletionEndsTheProgramAndItsChildren()
{
    auto process = std::make_unique<ScriptProcess>(
        commandfolder::script("sleep 1000 & echo $! > child; mv child done; wait"));
    process->start({});
    QTRY_VERIFY(!readFile(u"script/done"_s).isEmpty());
    const pid_t child = readFile(u"script/done"_s).trimmed().toInt();
    QVERIFY(isRunning(child));
    process.reset();
    QTRY_VERIFY(!isRunning(child));
}

VASKEL_TEST(tst_ScriptProcess, QCoreApplication)
#include "tst_ScriptProcess.moc"
