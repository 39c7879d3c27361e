// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppLauncher.h"

#include "launcher/LauncherTest.h"
#include "support/TestProgram.h"

#include <QDesktopServices>
#include <QFile>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace launchertest;

namespace {

QStringList messages;

void recordMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg) {
        messages.append(text);
    }
}

/// Records the debug messages during its lifetime.
class MessageRecorder
{
public:
    MessageRecorder()
        : m_previous(qInstallMessageHandler(recordMessage))
    {
        messages.clear();
    }
    ~MessageRecorder() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY_MOVE(MessageRecorder)

private:
    QtMessageHandler m_previous;
};

/// The output of the program below, as lines of "key=value".
QHash<QString, QString> recordIn(const QString &filePath)
{
    QHash<QString, QString> record;
    QFile file(filePath);
    if (file.open(QIODevice::ReadOnly)) {
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (const QString &line : lines) {
            record.insert(line.section(u'=', 0, 0), line.section(u'=', 1));
        }
    }
    return record;
}

QString ownSession()
{
    QFile status(u"/proc/self/stat"_s);
    return status.open(QIODevice::ReadOnly)
               ? QString::fromLatin1(status.readAll()).section(u") "_s, -1).section(u' ', 3, 3)
               : QString();
}

} // namespace

class tst_AppLauncherLaunch : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void openUrl(const QUrl &url) { m_urls.append(url); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void rejectsAnEmptyPathWithoutLogging();
    void logsBeforeItLaunches();
    void opensAddresses_data();
    void opensAddresses();
    void failsForAnInvalidAddress();
    void takesOtherSchemesForPrograms_data();
    void takesOtherSchemesForPrograms();
    void letsTheSystemOpenALink_data();
    void letsTheSystemOpenALink();
    void returnsTheAnswerOfTheSystem();
    void startsAProgramOfTheSearchPath();
    void startsAProgramByItsFullPath();
    void startsTheFileThatTheSystemFindsForACommand();
    void failsForACommandThatTheSystemDoesNotFind();
    void startsAProgramInTheLaunchersFolderAndASessionOfItsOwn();
    void passesOnTheEnvironment();
    void failsForAFileThatIsNoProgram_data();
    void failsForAFileThatIsNoProgram();
    void isInvokableByName();

private:
    QString recordFile() const { return testhome::path() + "/record"_L1; }
    QString writeRecorder(const QString &relativePath);

    QList<QUrl> m_urls;
    QByteArray m_searchPath;
};

void tst_AppLauncherLaunch::initTestCase()
{
    m_searchPath = qgetenv("PATH");
    for (const auto &scheme : {u"http"_s, u"https"_s, u"ms-settings"_s, u"ftp"_s, u"file"_s}) {
        QDesktopServices::setUrlHandler(scheme, this, "openUrl");
    }
}

void tst_AppLauncherLaunch::init()
{
    reset();
    m_urls.clear();
    qputenv("PATH", QFile::encodeName(testhome::path()) + "/bin:" + m_searchPath);
}

void tst_AppLauncherLaunch::cleanupTestCase()
{
    fakePlatform() = FakePlatform();
    for (const auto &scheme : {u"http"_s, u"https"_s, u"ms-settings"_s, u"ftp"_s, u"file"_s}) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
}

/// A program that writes how it was started, then renames its file to recordFile() to show that it
/// is complete.
QString tst_AppLauncherLaunch::writeRecorder(const QString &relativePath)
{
    const QByteArray record = QFile::encodeName(recordFile());
    const QByteArray part = record + ".part";
    const QByteArray script = "#!/bin/sh\n"
                              "{\n"
                              "echo \"arguments=$#\"\n"
                              "echo \"folder=$(pwd -P)\"\n"
                              "echo \"wanted=$WANTED\"\n"
                              "echo \"status=$(cat /proc/$$/stat)\"\n"
                              "} >'"
                              + part + "'\nmv '" + part + "' '" + record + "'\n";
    QString path = testhome::writeFile(relativePath, script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

void tst_AppLauncherLaunch::rejectsAnEmptyPathWithoutLogging()
{
    AppLauncher launcher;
    const MessageRecorder recorder;
    QVERIFY(!launcher.launch(QString()));
    QVERIFY(!launcher.launch(u""_s));
    QCOMPARE(messages, QStringList());
}

void tst_AppLauncherLaunch::logsBeforeItLaunches()
{
    AppLauncher launcher;
    const MessageRecorder recorder;
    launcher.launch(u"no-such-program"_s);
    launcher.launch(u"https://example.org/"_s);
    launcher.launch(u"/menu/App.link"_s);
    QCOMPARE(messages, QStringList({uR"(Launching: "no-such-program")"_s,
                                    uR"(Launching: "https://example.org/")"_s,
                                    uR"(Launching: "/menu/App.link")"_s}));
}

void tst_AppLauncherLaunch::opensAddresses_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("url");

    QTest::newRow("http") << u"http://example.org/"_s << QByteArray("http://example.org/");
    QTest::newRow("https") << u"https://www.example.org/?q=1"_s
                           << QByteArray("https://www.example.org/?q=1");
    QTest::newRow("settings") << u"ms-settings:"_s << QByteArray("ms-settings:");
    QTest::newRow("one page of the settings")
        << u"ms-settings:display"_s << QByteArray("ms-settings:display");
    QTest::newRow("blank in the address, tolerated")
        << u"https://example.org/a b"_s << QByteArray("https://example.org/a%20b");
    QTest::newRow("link suffix in an address")
        << u"https://example.org/App.link"_s << QByteArray("https://example.org/App.link");
}

void tst_AppLauncherLaunch::opensAddresses()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, url);

    QVERIFY(AppLauncher().launch(path));
    QCOMPARE(m_urls.size(), 1);
    QCOMPARE(m_urls.first().toEncoded(), url);
    QVERIFY(fakePlatform().openedLinks.isEmpty());
}

void tst_AppLauncherLaunch::failsForAnInvalidAddress()
{
    // Even such an address reaches a handler.
    QDesktopServices::unsetUrlHandler(u"https"_s);
    QVERIFY(!AppLauncher().launch(u"https://["_s));
    QDesktopServices::setUrlHandler(u"https"_s, this, "openUrl");
}

void tst_AppLauncherLaunch::takesOtherSchemesForPrograms_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("scheme in capitals") << u"HTTPS://example.org/"_s;
    QTest::newRow("scheme with one capital") << u"Http://example.org/"_s;
    QTest::newRow("settings in capitals") << u"MS-SETTINGS:"_s;
    QTest::newRow("other scheme") << u"ftp://example.org/"_s;
    QTest::newRow("file address") << u"file:///etc/hostname"_s;
    QTest::newRow("half a prefix") << u"https:/example.org/"_s;
    QTest::newRow("address behind a blank") << u" https://example.org/"_s;
}

void tst_AppLauncherLaunch::takesOtherSchemesForPrograms()
{
    QFETCH(QString, path);

    QVERIFY(!AppLauncher().launch(path));
    QVERIFY(m_urls.isEmpty());
    QVERIFY(fakePlatform().openedLinks.isEmpty());
}

void tst_AppLauncherLaunch::letsTheSystemOpenALink_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("suffix") << u"/menu/App.link"_s;
    QTest::newRow("suffix in capitals") << u"/menu/App.LINK"_s;
    QTest::newRow("the last of two suffixes") << u"/menu/Foo.Bar.Link"_s;
    QTest::newRow("a name alone") << u"App.link"_s;
}

void tst_AppLauncherLaunch::letsTheSystemOpenALink()
{
    QFETCH(QString, path);

    QVERIFY(AppLauncher().launch(path));
    QCOMPARE(fakePlatform().openedLinks, QStringList(path));
}

void tst_AppLauncherLaunch::returnsTheAnswerOfTheSystem()
{
    fakePlatform().openLinkResult = false;
    QVERIFY(!AppLauncher().launch(u"/menu/App.link"_s));
    QCOMPARE(fakePlatform().openedLinks, QStringList(u"/menu/App.link"_s));
}

void tst_AppLauncherLaunch::startsAProgramOfTheSearchPath()
{
    writeRecorder(u"bin/recorder"_s);
    QVERIFY(AppLauncher().launch(u"recorder"_s));
    QTRY_VERIFY(QFile::exists(recordFile()));
    QCOMPARE(recordIn(recordFile()).value(u"arguments"_s), u"0"_s);
}

void tst_AppLauncherLaunch::startsAProgramByItsFullPath()
{
    const QString path = writeRecorder(u"elsewhere/记录 recorder.sh"_s);
    QVERIFY(AppLauncher().launch(path));
    QTRY_VERIFY(QFile::exists(recordFile()));
    QCOMPARE(recordIn(recordFile()).value(u"arguments"_s), u"0"_s);
}

void tst_AppLauncherLaunch::startsTheFileThatTheSystemFindsForACommand()
{
    const QString planted = testhome::writeFile(u"bin/command"_s, "#!/bin/sh\nexit 1\n");
    QFile::setPermissions(planted, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    fakePlatform().programFiles.insert(u"command"_s, writeRecorder(u"system/command"_s));
    QVERIFY(AppLauncher().launch(u"command"_s));
    QTRY_VERIFY(QFile::exists(recordFile()));
}

void tst_AppLauncherLaunch::failsForACommandThatTheSystemDoesNotFind()
{
    writeRecorder(u"bin/command"_s);
    fakePlatform().programFiles.insert(u"command"_s, QString());
    QVERIFY(!AppLauncher().launch(u"command"_s));
}

void tst_AppLauncherLaunch::startsAProgramInTheLaunchersFolderAndASessionOfItsOwn()
{
    const QString path = writeRecorder(u"elsewhere/recorder"_s);
    QVERIFY(AppLauncher().launch(path));
    QTRY_VERIFY(QFile::exists(recordFile()));

    const QHash<QString, QString> record = recordIn(recordFile());
    QCOMPARE(record.value(u"folder"_s), QFileInfo(QDir::currentPath()).canonicalFilePath());
    const QString session = record.value(u"status"_s).section(u") "_s, -1).section(u' ', 3, 3);
    QVERIFY(session.toLongLong() > 0);
    QVERIFY(session != ownSession());
}

void tst_AppLauncherLaunch::passesOnTheEnvironment()
{
    writeRecorder(u"bin/recorder"_s);
    qputenv("WANTED", "for programs");

    QVERIFY(AppLauncher().launch(u"recorder"_s));
    qunsetenv("WANTED");
    QTRY_VERIFY(QFile::exists(recordFile()));
    QCOMPARE(recordIn(recordFile()).value(u"wanted"_s), u"for programs"_s);
}

void tst_AppLauncherLaunch::failsForAFileThatIsNoProgram_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("unknown name") << u"no-such-program"_s;
    QTest::newRow("missing file") << u"/no/such/program.exe"_s;
    QTest::newRow("program with an option") << u"recorder --version"_s;
    QTest::newRow("program in quotes") << u"\"recorder\""_s;
    QTest::newRow("blank around the name") << u" recorder"_s;
    QTest::newRow("file that cannot be executed") << u"text.txt"_s;
}

void tst_AppLauncherLaunch::failsForAFileThatIsNoProgram()
{
    QFETCH(QString, path);
    writeRecorder(u"bin/recorder"_s);
    testhome::writeFile(u"bin/text.txt"_s, "text");

    QVERIFY(!AppLauncher().launch(path));
    QVERIFY(!QFile::exists(recordFile()));
}

void tst_AppLauncherLaunch::isInvokableByName()
{
    AppLauncher launcher;
    bool isStarted = false;
    QVERIFY(QMetaObject::invokeMethod(&launcher, "launch", Q_RETURN_ARG(bool, isStarted),
                                      Q_ARG(QString, u"/menu/App.link"_s)));
    QVERIFY(isStarted);
    QCOMPARE(fakePlatform().openedLinks, QStringList(u"/menu/App.link"_s));
}

VASKEL_TEST(tst_AppLauncherLaunch, QApplication)
#include "tst_AppLauncherLaunch.moc"
