// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UpdateScript.h"

#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/HttpServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

namespace {

constexpr auto *updatePath = "Vaskel_update.exe";
constexpr auto *scriptPath = "Vaskel_updater.bat";

QString temporary(const char *fileName)
{
    return testhome::path() + "/tmp/"_L1 + QLatin1StringView(fileName);
}

int modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 07777)
                                                                     : -1;
}

/// Another program: it records the path by which it was started, and whether the old program had
/// ended by then.
QByteArray newProgram()
{
    return "#!/bin/sh\n"
           "if [ -e \"$HOME/old-ended\" ]; then\n"
           "    printf 'ended:%s' \"$0\" >\"$HOME/part\"\n"
           "else\n"
           "    printf 'running:%s' \"$0\" >\"$HOME/part\"\n"
           "fi\n"
           "mv \"$HOME/part\" \"$HOME/new-runs\"\n";
}

QString newRuns()
{
    return testhome::path() + "/new-runs"_L1;
}

} // namespace

/// The real script: a copy of a program replaces itself with a download.
class tst_UpdateScript : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void updatesTheRunningProgram_data();
    void updatesTheRunningProgram();
    void keepsThePermissions_data();
    void keepsThePermissions();
    void replacesTheProgramInOneStep();
    void startsTheNewProgramEvenIfTheOldOneHangs();
    void startsTheNewProgramWithTheMaskAndSignalsOfTheOldOne();
    void keepsBothFilesAndReportsAFolderWithoutAccess();
    void keepsTheProgramAndReportsAMissingDownload();
    void notifiesTheDesktopOfTheFailure();
    void refusesAnExistingFileName();
    void quotesWhateverAPathHolds();

private:
    /// Starts a copy of the program that updates itself, in a folder of this name.
    void startCopy(const QString &folder, const QString &name, int millisecondsToEnd = 0);
    /// Runs the script of this process and returns its standard error output.
    QString runScript(const QString &download, const QString &program);

    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<QProcess> m_old;
    QString m_program;
};

void tst_UpdateScript::init()
{
    testhome::reset();
    qputenv("PATH", "/usr/bin:/bin");
    m_server = std::make_unique<HttpServer>();
    m_server->answerBody(u"/new"_s, newProgram());
}

void tst_UpdateScript::startCopy(const QString &folder, const QString &name, int millisecondsToEnd)
{
    m_program = testhome::path() + u'/' + folder + u'/' + name;
    QVERIFY(QDir().mkpath(QFileInfo(m_program).path()));
    QVERIFY(QFile::copy(QStringLiteral(SELF_UPDATER), m_program));
    m_old = std::make_unique<QProcess>();
    m_old->setProcessChannelMode(QProcess::MergedChannels);
    m_old->start(m_program, {m_server->url(u"/new"_s), QString::number(millisecondsToEnd),
                             testhome::path() + "/old-ended"_L1});
    QVERIFY(m_old->waitForStarted());
}

QString tst_UpdateScript::runScript(const QString &download, const QString &program)
{
    const QString script = testhome::writeFile(u"tmp/Vaskel_updater.bat"_s,
                                               platform::updateScript(download, program).toUtf8());
    QProcess shell;
    shell.start(u"/bin/sh"_s, {script});
    if (!shell.waitForFinished()) {
        return u"the script does not end: "_s + QString::fromUtf8(shell.readAllStandardError());
    }
    return QString::fromUtf8(shell.readAllStandardError()) + u"exit "_s
           + QString::number(shell.exitCode());
}

void tst_UpdateScript::updatesTheRunningProgram_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << u"bin"_s << u"program"_s;
    QTest::newRow("blanks") << u"my programs"_s << u" a program "_s;
    QTest::newRow("quotes") << u"it's \"mine\""_s << u"'"_s;
    QTest::newRow("expansions") << u"$HOME `id` $(id)"_s << u"*?[a] \\ $0"_s;
    QTest::newRow("line feeds") << u"one\ntwo"_s << u"\nprogram\n\n"_s;
    QTest::newRow("place markers") << u"%1 %2"_s << u"%5%%"_s;
    QTest::newRow("other scripts") << u"程序"_s << u"é"_s;
    QTest::newRow("dash and hash") << u"-rf #"_s << u"-n; exit 1"_s;
}

void tst_UpdateScript::updatesTheRunningProgram()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    startCopy(folder, name, 300);
    QVERIFY(!QTest::currentTestFailed());
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(newRuns()), 30000);

    QCOMPARE(contentOf(newRuns()), "ended:" + m_program.toUtf8());
    QCOMPARE(contentOf(m_program), newProgram());
    QTRY_COMPARE(m_old->state(), QProcess::NotRunning);
    QCOMPARE(m_old->readAll(), "");
    QCOMPARE(m_old->exitCode(), 0);
    QVERIFY(!QFile::exists(temporary(updatePath)));
    QTRY_VERIFY(!QFile::exists(temporary(scriptPath)));
    QCOMPARE(QDir(QFileInfo(m_program).path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{name});
}

void tst_UpdateScript::keepsThePermissions_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("for all") << 0755;
    QTest::newRow("for the user alone") << 0700;
    QTest::newRow("not even to be written") << 0555;
    QTest::newRow("for the group") << 0771;
}

void tst_UpdateScript::keepsThePermissions()
{
    QFETCH(int, mode);
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    const QString download = testhome::writeFile(u"tmp/Vaskel_update.exe"_s, newProgram());
    QCOMPARE(::chmod(QFile::encodeName(program).constData(), mode_t(mode)), 0);
    QCOMPARE(runScript(download, program), u"exit 0"_s);
    QCOMPARE(contentOf(program), newProgram());
    QCOMPARE(modeOf(program), mode);
    QTRY_VERIFY(QFile::exists(newRuns()));
}

// A process that has the old file open keeps its whole content.
void tst_UpdateScript::replacesTheProgramInOneStep()
{
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    const QString download = testhome::writeFile(u"tmp/Vaskel_update.exe"_s, newProgram());
    QCOMPARE(::chmod(QFile::encodeName(program).constData(), 0755), 0);
    QFile old(program);
    QVERIFY(old.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QCOMPARE(runScript(download, program), u"exit 0"_s);
    QCOMPARE(contentOf(program), newProgram());
    QCOMPARE(old.readAll(), "old program");
    QTRY_VERIFY(QFile::exists(newRuns()));
}

void tst_UpdateScript::startsTheNewProgramEvenIfTheOldOneHangs()
{
    QElapsedTimer timer;
    timer.start();
    startCopy(u"bin"_s, u"program"_s, 60000);
    QVERIFY(!QTest::currentTestFailed());
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(newRuns()), 30000);
    QCOMPARE(contentOf(newRuns()), "running:" + m_program.toUtf8());
    QVERIFY(timer.elapsed() >= 2000);
    m_old->kill();
    m_old->waitForFinished();
}

void tst_UpdateScript::startsTheNewProgramWithTheMaskAndSignalsOfTheOldOne()
{
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    QCOMPARE(::chmod(QFile::encodeName(program).constData(), 0755), 0);
    const QString download = testhome::writeFile(
        u"tmp/Vaskel_update.exe"_s, "#!/bin/sh\n"
                                    "umask >\"$HOME/part\"\n"
                                    "sed -n 's/^SigIgn:\t//p' /proc/self/status >>\"$HOME/part\"\n"
                                    "mv \"$HOME/part\" \"$HOME/new-runs\"\n");
    const QString script = testhome::writeFile(u"tmp/Vaskel_updater.bat"_s,
                                               platform::updateScript(download, program).toUtf8());
    // A shell that runs this in the background may ignore the signal.
    ::signal(SIGINT, SIG_DFL);
    ::signal(SIGQUIT, SIG_DFL);
    ::signal(SIGHUP, SIG_DFL);
    // The program ignores this signal too.
    const auto handler = ::signal(SIGPIPE, SIG_IGN);
    const mode_t mask = ::umask(027);
    platform::startUpdateScript(script);
    ::umask(mask);
    ::signal(SIGPIPE, handler);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(newRuns()), 30000);

    const QList<QByteArray> lines = contentOf(newRuns()).value().split('\n');
    QCOMPARE(lines.first(), "0027");
    const quint64 ignored = lines.at(1).toULongLong(nullptr, 16);
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM}) {
        QVERIFY2((ignored & quint64(1) << unsigned(number - 1)) == 0, lines.at(1).constData());
    }
    QVERIFY(!QFile::exists(script));
    QVERIFY(!QFile::exists(download));
}

void tst_UpdateScript::keepsBothFilesAndReportsAFolderWithoutAccess()
{
    if (::geteuid() == 0) {
        // Root ignores permissions, but even root cannot create a file in /proc.
        const QString download = testhome::writeFile(u"tmp/Vaskel_update.exe"_s, newProgram());
        const QString output = runScript(download, u"/proc/self/program"_s);
        QVERIFY2(output.endsWith("Failed to copy update file\nexit 1"_L1), qPrintable(output));
        QCOMPARE(contentOf(download), newProgram());
        return;
    }
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    const QString download = testhome::writeFile(u"tmp/Vaskel_update.exe"_s, newProgram());
    const QByteArray folder = QFile::encodeName(QFileInfo(program).path());
    QCOMPARE(::chmod(folder.constData(), 0500), 0);
    const QString output = runScript(download, program);
    QCOMPARE(::chmod(folder.constData(), 0700), 0);
    QVERIFY2(output.endsWith("Failed to copy update file\nexit 1"_L1), qPrintable(output));
    QCOMPARE(contentOf(program), "old program");
    QCOMPARE(contentOf(download), newProgram());
    QVERIFY(!QFile::exists(newRuns()));
}

void tst_UpdateScript::keepsTheProgramAndReportsAMissingDownload()
{
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    const QString output = runScript(temporary(updatePath), program);
    QVERIFY2(output.endsWith("Failed to copy update file\nexit 1"_L1), qPrintable(output));
    QCOMPARE(contentOf(program), "old program");
    QCOMPARE(QDir(QFileInfo(program).path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{u"program"_s});
    QVERIFY(!QFile::exists(newRuns()));
}

void tst_UpdateScript::notifiesTheDesktopOfTheFailure()
{
    const QString notifier = testhome::writeFile(
        u"desktop/notify-send"_s, "#!/bin/sh\nprintf '%s|' \"$@\" >\"$HOME/told\"\n");
    QVERIFY(QFile::setPermissions(notifier, QFile::ReadOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(testhome::path() + "/desktop:/usr/bin:/bin"_L1));
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    runScript(temporary(updatePath), program);
    QCOMPARE(contentOf(testhome::path() + "/told"_L1), "Vaskel|Failed to copy update file|");
}

// Another user with access to the folder could guess the new file's name.
void tst_UpdateScript::refusesAnExistingFileName()
{
    const QString program = testhome::writeFile(u"bin/program"_s, "old program");
    const QString download = testhome::writeFile(u"tmp/Vaskel_update.exe"_s, newProgram());
    const QString own = testhome::writeFile(u"own"_s, "content");
    const QString script = testhome::writeFile(u"tmp/Vaskel_updater.bat"_s,
                                               platform::updateScript(download, program).toUtf8());
    // This shell creates a symbolic link under the name made from its own process ID, and then
    // becomes the one that runs the script.
    QProcess shell;
    shell.start(u"/bin/sh"_s, {u"-c"_s, u"ln -s \"$1\" \"$2.new.$$\"; exec /bin/sh \"$3\""_s,
                               u"sh"_s, own, program, script});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.exitCode(), 1);
    QCOMPARE(contentOf(own), "content");
    QCOMPARE(contentOf(program), "old program");
    QCOMPARE(contentOf(download), newProgram());
}

void tst_UpdateScript::quotesWhateverAPathHolds()
{
    const QString program = testhome::writeFile(u"a 'b' \"c\"\n$d/program"_s, "old program");
    const QString download = testhome::writeFile(u"tmp/e'f\n$(g)/download"_s, newProgram());
    QCOMPARE(::chmod(QFile::encodeName(program).constData(), 0755), 0);
    QCOMPARE(runScript(download, program), u"exit 0"_s);
    QCOMPARE(contentOf(program), newProgram());
    QVERIFY(!QFile::exists(download));
    QTRY_VERIFY(QFile::exists(newRuns()));
}

VASKEL_TEST(tst_UpdateScript, QCoreApplication)
#include "tst_UpdateScript.moc"
