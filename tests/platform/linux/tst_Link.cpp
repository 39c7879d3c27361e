// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include "Recording.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_Link : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void startsTheProgramWithItsArguments_data();
    void startsTheProgramWithItsArguments();
    void startsInThePathOfTheEntry();
    void startsInTheCurrentFolderOtherwise();
    void startsASessionOfItsOwn();
    void programOutlivesItsStarterBeingKilled();
    void leavesNoZombie();
    void passesOnTheEnvironment();
    void passesOnNoFurtherFiles();
    void passesOnNoSignalSettings();
    void startsAnEntryThatIsNotListed();
    void startsNothing_data();
    void startsNothing();
    void startsNothingFromWhatIsNoFile_data();
    void startsNothingFromWhatIsNoFile();
    void startsInATerminal_data();
    void startsInATerminal();
    void startsNothingWithoutATerminal();
    void usesTheCommandWithoutABus();
    void failsWithoutBusAndCommand();
};

namespace {

QString entryPath(const QByteArray &lines)
{
    return testhome::writeFile(u"data/applications/org.example.Recorder.desktop"_s,
                               "[Desktop Entry]\nType=Application\nName=Recorder\n" + lines);
}

QByteArray execLine(const QByteArray &arguments)
{
    return "Exec=\"" + QFile::encodeName(recording::program()) + "\" " + arguments + '\n';
}

QStringList recordedArguments()
{
    QStringList list;
    const QJsonArray arguments = recording::record().value("arguments"_L1).toArray();
    for (const auto &argument : arguments) {
        list.append(argument.toString());
    }
    return list;
}

QString folder(const QString &name)
{
    QString path = testhome::path() + u'/' + name;
    QDir().mkpath(path);
    return path;
}

// A terminal that runs its arguments, like all of the well-known ones.
void installTerminal(const QString &name)
{
    const QString path = testhome::writeFile("bin/"_L1 + name, "#!/bin/sh\n"
                                                               "RECORDED_TERMINAL=${0##*/}\n"
                                                               "export RECORDED_TERMINAL\n"
                                                               "shift\n"
                                                               "exec \"$@\"\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

void tst_Link::init()
{
    testhome::reset();
    recording::prepare();
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    qputenv("PATH", "/usr/bin:/bin");
}

void tst_Link::cleanup()
{
    qunsetenv("RECORD_AGAIN_AFTER");
}

void tst_Link::startsTheProgramWithItsArguments_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QStringList>("given");
    QTest::newRow("none") << QByteArray() << QStringList();
    QTest::newRow("options") << QByteArray("--new -x") << QStringList{u"--new"_s, u"-x"_s};
    QTest::newRow("quoted") << QByteArray(R"("a b" "c\\"d" "\\$e" "\\\\")")
                            << QStringList{u"a b"_s, u"c\"d"_s, u"$e"_s, u"\\"_s};
    QTest::newRow("for one file") << QByteArray("--open %f") << QStringList{u"--open"_s};
    QTest::newRow("for files") << QByteArray("%F --") << QStringList{u"--"_s};
    QTest::newRow("for an address") << QByteArray("%u") << QStringList();
    QTest::newRow("for addresses") << QByteArray("-- %U") << QStringList{u"--"_s};
    QTest::newRow("percent sign") << QByteArray("100%%") << QStringList{u"100%"_s};
    QTest::newRow("name") << QByteArray("--title %c") << QStringList{u"--title"_s, u"Recorder"_s};
    QTest::newRow("icon") << QByteArray("%i") << QStringList{u"--icon"_s, u"camera"_s};
    QTest::newRow("no shell") << QByteArray("a;b $HOME `x` *")
                              << QStringList{u"a;b"_s, u"$HOME"_s, u"`x`"_s, u"*"_s};
    QTest::newRow("Chinese") << QByteArray("记事本") << QStringList{u"记事本"_s};
}

void tst_Link::startsTheProgramWithItsArguments()
{
    QFETCH(QByteArray, written);
    QFETCH(QStringList, given);
    QVERIFY(platform::openLink(entryPath("Icon=camera\n" + execLine(written))));
    QTRY_COMPARE(recordedArguments(), QStringList{recording::program()} + given);
}

void tst_Link::startsInThePathOfTheEntry()
{
    const QString path = folder(u"a folder/of $its own"_s);
    QVERIFY(platform::openLink(entryPath(execLine({}) + "Path=" + path.toUtf8() + '\n')));
    QTRY_COMPARE(recording::record().value("folder"_L1).toString(), path);
}

void tst_Link::startsInTheCurrentFolderOtherwise()
{
    const QString before = QDir::currentPath();
    const auto goBack = qScopeGuard([&before] { QDir::setCurrent(before); });
    const QString path = folder(u"current"_s);
    QDir::setCurrent(path);
    QVERIFY(platform::openLink(entryPath(execLine({}))));
    QTRY_COMPARE(recording::record().value("folder"_L1).toString(), path);
}

void tst_Link::startsASessionOfItsOwn()
{
    QVERIFY(platform::openLink(entryPath(execLine({}))));
    QTRY_VERIFY(!recording::record().isEmpty());
    const QJsonObject record = recording::record();
    QCOMPARE(record.value("session"_L1), record.value("process"_L1));
    QVERIFY(record.value("session"_L1).toInt() != getsid(0));
}

void tst_Link::programOutlivesItsStarterBeingKilled()
{
    const QString signal = testhome::path() + "/go"_L1;
    qputenv("RECORD_AGAIN_AFTER", QFile::encodeName(signal));
    QProcess opener;
    opener.setChildProcessModifier([] { setsid(); });
    opener.start(QStringLiteral(OPENER), {entryPath(execLine({}))});
    QVERIFY(opener.waitForReadyRead());
    QTRY_VERIFY(!recording::record().isEmpty());

    kill(-pid_t(opener.processId()), SIGKILL);
    QVERIFY(opener.waitForFinished());
    QCOMPARE(opener.exitStatus(), QProcess::CrashExit);
    testhome::writeFile(u"go"_s, {});
    QTRY_VERIFY(recording::record().value("lived"_L1).toBool());
}

void tst_Link::leavesNoZombie()
{
    QVERIFY(platform::openLink(entryPath(execLine({}))));
    QTRY_VERIFY(!recording::record().isEmpty());
    QCOMPARE(waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
}

void tst_Link::passesOnTheEnvironment()
{
    qputenv("KEPT", "kept äöü");
    const auto forget = qScopeGuard([] { qunsetenv("KEPT"); });
    QVERIFY(platform::openLink(entryPath(execLine({}))));
    QTRY_VERIFY(!recording::record().isEmpty());
    const QJsonObject environment = recording::record().value("environment"_L1).toObject();
    QCOMPARE(environment.value("KEPT"_L1).toString(), u"kept äöü"_s);
    QCOMPARE(environment.value("HOME"_L1).toString(), testhome::path());
}

void tst_Link::passesOnNoFurtherFiles()
{
    // The program must not inherit it. NOLINTNEXTLINE(android-cloexec-open)
    const int inherited = open("/dev/null", O_RDONLY);
    const auto closeIt = qScopeGuard([inherited] { close(inherited); });
    QVERIFY(inherited > 2);
    QVERIFY(platform::openLink(entryPath(execLine({}))));
    QTRY_VERIFY(!recording::record().isEmpty());
    const QJsonObject files = recording::record().value("files"_L1).toObject();
    QCOMPARE(files.keys(), (QStringList{u"0"_s, u"1"_s, u"2"_s}));
    QCOMPARE(files.value("0"_L1).toString(), u"/dev/null"_s);
}

void tst_Link::passesOnNoSignalSettings()
{
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto oldHandler = std::signal(SIGQUIT, SIG_IGN);
    const auto restore = qScopeGuard([&] {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        std::signal(SIGQUIT, oldHandler);
    });
    QVERIFY(platform::openLink(entryPath(execLine({}))));
    QTRY_VERIFY(!recording::record().isEmpty());
    const QJsonObject masks = recording::record().value("signals"_L1).toObject();
    QCOMPARE(masks.value("SigBlk"_L1).toString(), u"0"_s.repeated(16));
    QCOMPARE(masks.value("SigIgn"_L1).toString(), u"0"_s.repeated(16));
}

void tst_Link::startsAnEntryThatIsNotListed()
{
    QVERIFY(platform::openLink(entryPath(execLine({}) + "NoDisplay=true\nOnlyShowIn=Other;\n")));
    QTRY_VERIFY(!recording::record().isEmpty());
}

void tst_Link::startsNothing_data()
{
    QTest::addColumn<QByteArray>("entry");
    const QByteArray head = "[Desktop Entry]\nType=Application\nName=Recorder\n";
    const QByteArray exec = execLine({});
    QTest::newRow("nothing in it") << QByteArray();
    QTest::newRow("text") << QByteArray("Hello");
    QTest::newRow("a line that is none") << head + exec + "nonsense\n";
    QTest::newRow("no type") << "[Desktop Entry]\nName=Recorder\n" + exec;
    QTest::newRow("another type") << "[Desktop Entry]\nType=Link\nName=Recorder\n" + exec;
    QTest::newRow("no command") << head;
    QTest::newRow("empty command") << head + "Exec=\n";
    QTest::newRow("program not installed") << head + "Exec=no-such-program\n";
    QTest::newRow("TryExec not installed") << head + exec + "TryExec=no-such-program\n";
    QTest::newRow("folder not there") << head + exec + "Path=/no/such/folder\n";
    QTest::newRow("huge") << head + exec + QByteArray(10'000'000, '#');
}

void tst_Link::startsNothing()
{
    QFETCH(QByteArray, entry);
    QVERIFY(!platform::openLink(testhome::writeFile(u"other/a.desktop"_s, entry)));
    QVERIFY(recording::record().isEmpty());
}

void tst_Link::startsNothingFromWhatIsNoFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty path") << QString();
    QTest::newRow("missing") << u"/no/such/file.desktop"_s;
    QTest::newRow("folder") << u"/etc"_s;
    QTest::newRow("endless") << u"/dev/zero"_s;
}

void tst_Link::startsNothingFromWhatIsNoFile()
{
    QFETCH(QString, path);
    QVERIFY(!platform::openLink(path));
}

void tst_Link::startsInATerminal_data()
{
    QTest::addColumn<QString>("terminal");
    for (const auto &name : {u"gnome-terminal"_s, u"konsole"_s, u"xterm"_s,
                             u"x-terminal-emulator"_s, u"kitty"_s, u"st"_s}) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void tst_Link::startsInATerminal()
{
    QFETCH(QString, terminal);
    installTerminal(terminal);
    for (const char *bus : {"", "DBusActivatable=true\n"}) {
        recording::prepare();
        const QString path = entryPath(execLine("\"a b\" %f") + "Terminal=true\n" + bus);
        const QByteArray place = testhome::path().toUtf8() + "/bin";
        qputenv("PATH", place);
        QVERIFY(platform::openLink(path));
        QTRY_COMPARE(recordedArguments(), (QStringList{recording::program(), u"a b"_s}));
        const QJsonObject environment = recording::record().value("environment"_L1).toObject();
        QCOMPARE(environment.value("RECORDED_TERMINAL"_L1).toString(), terminal);
    }
}

void tst_Link::startsNothingWithoutATerminal()
{
    qputenv("PATH", "/no/such/folder");
    QVERIFY(!platform::openLink(entryPath(execLine({}) + "Terminal=true\n")));
}

void tst_Link::usesTheCommandWithoutABus()
{
    QVERIFY(platform::openLink(entryPath(execLine("--ours") + "DBusActivatable=true\n")));
    QTRY_COMPARE(recordedArguments(), (QStringList{recording::program(), u"--ours"_s}));
}

void tst_Link::failsWithoutBusAndCommand()
{
    QVERIFY(!platform::openLink(entryPath("DBusActivatable=true\n")));
}

VASKEL_TEST(tst_Link, QCoreApplication)
#include "tst_Link.moc"
