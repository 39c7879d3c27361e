// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UpdateScript.h"

#include "platform/ProcessEnvironment.h"
#include "platform/windows/Recording.h"
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

#include <memory>

#include <windows.h>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

namespace {

QString temporary(const QString &fileName)
{
    return testhome::path() + "/tmp/"_L1 + fileName;
}

QString downloadPath()
{
    return temporary(u"Vaskel_update.exe"_s);
}

QString scriptPath()
{
    return temporary(u"Vaskel_updater.bat"_s);
}

// The exact bytes for the command interpreter.
QByteArray expectedScript(const QByteArray &download, const QByteArray &program)
{
    return "@echo off\r\n"
           "timeout /t 2 /nobreak >nul\r\n"
           "copy /Y \""
           + download + "\" \"" + program
           + "\" >nul\r\n"
             "if %errorlevel% neq 0 (\r\n"
             "  echo Failed to copy update file\r\n"
             "  pause\r\n"
             "  exit /b 1\r\n"
             ")\r\n"
             "del \""
           + download
           + "\" >nul\r\n"
             "start \"\" \""
           + program
           + "\"\r\n"
             "del \"%~f0\" >nul\r\n";
}

void writeScript(const QString &download, const QString &program)
{
    QFile script(scriptPath());
    QVERIFY(script.open(QIODevice::WriteOnly | QIODevice::Text));
    script.write(platform::updateScript(download, program).toUtf8());
}

} // namespace

/// The real script under wine's command interpreter: a copy of a program replaces itself with a
/// download. The interpreter lacks "timeout", so the tests provide one. Its "del" treats a path
/// with forward slashes as a file of the working directory, so the old program works in the folder
/// for temporary files.
class tst_UpdateScript : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void writesTheScript_data();
    void writesTheScript();
    void hasThisManyCharactersBesideThePaths();
    void updatesTheRunningProgram_data();
    void updatesTheRunningProgram();
    void looksForCommandsInTheSystemFolderFirst();
    void startsTheScriptInAnyFolder_data();
    void startsTheScriptInAnyFolder();
    void newProgramForgetsTheSearchOrder();
    void keepsBothFilesAndReportsARunningProgram();
    void keepsTheProgramAndReportsAMissingDownload();
    void keepsBothFilesAndReportsAPathOutsideTheCodePage_data();
    void keepsBothFilesAndReportsAPathOutsideTheCodePage();

private:
    /// Starts a copy of the program that updates itself at this path in the home. It downloads this
    /// path of the server.
    void startCopy(const QString &relativePath, const QString &serverPath);
    /// Starts the script of this process and waits until it asks for a key.
    void runScriptIntoPause(const QString &program);
    void pressAnyKey();

    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<QProcess> m_old;
    std::unique_ptr<QProcess> m_interpreter;
    QString m_program;
};

void tst_UpdateScript::init()
{
    testhome::reset();
    static const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH",
            QDir::toNativeSeparators(QStringLiteral(COMMANDS)).toLocal8Bit() + ';' + searchPath);
    m_old.reset();
    m_interpreter.reset();
    m_server = std::make_unique<HttpServer>();
    m_server->answerBody(u"/new"_s, contentOf(recording::program()).value());
    m_server->answer(u"/never"_s, {}, HttpServer::End::Hang);
}

void tst_UpdateScript::startCopy(const QString &relativePath, const QString &serverPath)
{
    m_program = testhome::path() + u'/' + relativePath;
    const QDir folder(QFileInfo(m_program).path());
    QVERIFY(folder.mkpath(u"."_s));
    QVERIFY(QFile::copy(QStringLiteral(SELF_UPDATER), m_program));
    // The program does not start without it.
    const QString library = u"Everything64.dll"_s;
    QVERIFY(QFile::copy(QFileInfo(QStringLiteral(SELF_UPDATER)).dir().filePath(library),
                        folder.filePath(library)));
    m_old = std::make_unique<QProcess>();
    m_old->setWorkingDirectory(testhome::path() + "/tmp"_L1);
    m_old->start(m_program,
                 {m_server->url(serverPath), u"0"_s, testhome::path() + "/old-ended"_L1});
    QVERIFY(m_old->waitForStarted());
}

void tst_UpdateScript::runScriptIntoPause(const QString &program)
{
    writeScript(downloadPath(), program);
    m_interpreter = std::make_unique<QProcess>();
    m_interpreter->setWorkingDirectory(testhome::path() + "/tmp"_L1);
    m_interpreter->start(u"cmd"_s, {u"/c"_s, scriptPath()});
    QByteArray output;
    const auto isAskedForAKey = [this, &output] {
        output += m_interpreter->readAllStandardOutput();
        return output.startsWith("Failed to copy update file\r\n") && output.size() > 30;
    };
    QTRY_VERIFY2_WITH_TIMEOUT(isAskedForAKey(), output.constData(), 30000);
    QCOMPARE(m_interpreter->state(), QProcess::Running);
}

void tst_UpdateScript::pressAnyKey()
{
    m_interpreter->write("\r\n");
    QVERIFY(m_interpreter->waitForFinished());
    QCOMPARE(m_interpreter->exitCode(), 1);
    QVERIFY(QFile::exists(scriptPath()));
}

void tst_UpdateScript::writesTheScript_data()
{
    QTest::addColumn<QString>("download");
    QTest::addColumn<QString>("program");
    QTest::newRow("paths") << u"C:/Users/a b/Temp/Vaskel_update.exe"_s
                           << u"C:/Program Files (x86)/Vaskel/Vaskel.exe"_s;
    QTest::newRow("other scripts") << u"C:/用户/é.exe"_s << u"D:/程序/Vaskel.exe"_s;
    QTest::newRow("place markers") << u"%2"_s << u"%1"_s;
}

void tst_UpdateScript::writesTheScript()
{
    QFETCH(QString, download);
    QFETCH(QString, program);
    writeScript(download, program);
    QCOMPARE(contentOf(scriptPath()), expectedScript(download.toUtf8(), program.toUtf8()));
}

void tst_UpdateScript::hasThisManyCharactersBesideThePaths()
{
    writeScript(u"%1"_s, u"%2"_s);
    QCOMPARE(contentOf(scriptPath()).value().size(), 195);
}

void tst_UpdateScript::updatesTheRunningProgram_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << u"bin/program.exe"_s;
    QTest::newRow("blanks and brackets") << u"Program Files (x86)/a program.exe"_s;
    QTest::newRow("what the interpreter knows") << u"it's, a & b ^c=!/program.exe"_s;
}

void tst_UpdateScript::updatesTheRunningProgram()
{
    QFETCH(QString, path);
    QElapsedTimer timer;
    timer.start();
    startCopy(path, u"/new"_s);
    const QString starts = m_program + ".txt"_L1;
    QTRY_COMPARE_WITH_TIMEOUT(recording::starts(starts).size(), 1, 60000);
    QVERIFY(timer.elapsed() >= 2000);

    QCOMPARE(recording::starts(starts).first().first(), m_program);
    QVERIFY(QFile::exists(testhome::path() + "/old-ended"_L1));
    QVERIFY(contentOf(m_program) == contentOf(recording::program()).value());
    // The exit code of a process that still runs is 0.
    QTRY_COMPARE(m_old->state(), QProcess::NotRunning);
    QCOMPARE(m_old->exitCode(), 0);
    QCOMPARE(contentOf(temporary(u"timeout.txt"_s)), "/t 2 /nobreak ");
    QCOMPARE(contentOf(temporary(u"running.bat"_s)),
             expectedScript(downloadPath().toUtf8(), m_program.toUtf8()));
    QVERIFY(!QFile::exists(downloadPath()));
    QTRY_VERIFY(!QFile::exists(scriptPath()));
    QCOMPARE(QDir(QFileInfo(m_program).path()).entryList(QDir::Files | QDir::Hidden).size(), 3);
}

void tst_UpdateScript::looksForCommandsInTheSystemFolderFirst()
{
    // An interpreter that the user's folders offer would not write the file.
    QVERIFY(QFile::copy(recording::program(), temporary(u"cmd.exe"_s)));
    const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", QDir::toNativeSeparators(temporary({})).toLocal8Bit() + ';' + searchPath);
    const QString before = QDir::currentPath();
    QDir::setCurrent(temporary({}));
    const QString written = temporary(u"environment.txt"_s);
    testhome::writeFile(u"tmp/Vaskel_updater.bat"_s,
                        "@echo off\r\n"
                        "echo %PATH%>environment.part\r\n"
                        "echo %NoDefaultCurrentDirectoryInExePath%>>environment.part\r\n"
                        "ren environment.part environment.txt\r\n");
    platform::startUpdateScript(scriptPath());
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(written), 30000);
    QDir::setCurrent(before);
    qputenv("PATH", searchPath);
    const QByteArrayList lines = contentOf(written).value().split('\n');
    const QString system = qEnvironmentVariable("SystemRoot") + uR"(\system32;)"_s;
    QVERIFY2(QString::fromLocal8Bit(lines.value(0)).startsWith(system, Qt::CaseInsensitive),
             lines.value(0).constData());
    QCOMPARE(lines.value(1).trimmed(), "Vaskel");
    QVERIFY(recording::starts(temporary(u"cmd.exe.txt"_s)).isEmpty());
}

void tst_UpdateScript::startsTheScriptInAnyFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("plain") << u"folder"_s;
    QTest::newRow("blanks") << u"a folder"_s;
    QTest::newRow("two commands") << u"Tom&Jerry"_s;
    QTest::newRow("a command and blanks") << u"Tom & Jerry"_s;
    QTest::newRow("brackets") << u"Temp(x86)"_s;
    QTest::newRow("brackets and blanks") << u"Temp (x86)"_s;
    QTest::newRow("other separators") << u"a,b;c=d"_s;
    QTest::newRow("escapes") << u"a^b!c"_s;
    QTest::newRow("quotes and dashes") << u"-it's `here` $(x)"_s;
}

void tst_UpdateScript::startsTheScriptInAnyFolder()
{
    QFETCH(QString, folder);
    const QString script =
        testhome::writeFile(folder + "/a script.bat"_L1, "@echo off\r\n"
                                                         "echo x>\"%~dp0mark\"\r\n");
    platform::startUpdateScript(script);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(QFileInfo(script).path() + "/mark"_L1), 30000);
}

void tst_UpdateScript::newProgramForgetsTheSearchOrder()
{
    qputenv("NoDefaultCurrentDirectoryInExePath", "Vaskel");
    platform::unsetPrivateVariables();
    QVERIFY(!qEnvironmentVariableIsSet("NoDefaultCurrentDirectoryInExePath"));
    qputenv("NoDefaultCurrentDirectoryInExePath", "1");
    platform::unsetPrivateVariables();
    QCOMPARE(qgetenv("NoDefaultCurrentDirectoryInExePath"), "1");
    qunsetenv("NoDefaultCurrentDirectoryInExePath");
}

void tst_UpdateScript::keepsBothFilesAndReportsARunningProgram()
{
    startCopy(u"bin/program.exe"_s, u"/never"_s);
    QVERIFY(!QTest::currentTestFailed());
    QTRY_COMPARE(m_server->requests.size(), 1);
    runScriptIntoPause(m_program);
    QVERIFY(!QTest::currentTestFailed());
    pressAnyKey();
    QVERIFY(contentOf(m_program) == contentOf(QStringLiteral(SELF_UPDATER)).value());
    QVERIFY(QFile::exists(downloadPath()));
    QCOMPARE(recording::starts(m_program + ".txt"_L1).size(), 0);
    QCOMPARE(m_old->state(), QProcess::Running);
    m_old->kill();
    QVERIFY(m_old->waitForFinished());
}

void tst_UpdateScript::keepsTheProgramAndReportsAMissingDownload()
{
    const QString program = testhome::writeFile(u"bin/program.exe"_s, "old program");
    runScriptIntoPause(program);
    QVERIFY(!QTest::currentTestFailed());
    pressAnyKey();
    QCOMPARE(contentOf(program), "old program");
    QCOMPARE(QDir(QFileInfo(program).path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{u"program.exe"_s});
}

void tst_UpdateScript::keepsBothFilesAndReportsAPathOutsideTheCodePage_data()
{
    QTest::addColumn<QString>("folder");
    // The script is UTF-8, but the interpreter reads it in the system's code page.
    if (GetOEMCP() != CP_UTF8) {
        QTest::newRow("beyond the code page") << u"程序"_s;
    }
    QTest::newRow("a variable") << u"100%TEMP%"_s;
}

void tst_UpdateScript::keepsBothFilesAndReportsAPathOutsideTheCodePage()
{
    QFETCH(QString, folder);
    const QString program = testhome::writeFile(folder + "/program.exe"_L1, "old program");
    testhome::writeFile(u"tmp/Vaskel_update.exe"_s, contentOf(recording::program()).value());
    runScriptIntoPause(program);
    QVERIFY(!QTest::currentTestFailed());
    pressAnyKey();
    QCOMPARE(contentOf(program), "old program");
    QVERIFY(QFile::exists(downloadPath()));
}

VASKEL_TEST(tst_UpdateScript, QCoreApplication)
#include "tst_UpdateScript.moc"
