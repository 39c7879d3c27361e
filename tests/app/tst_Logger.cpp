// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Logger.h"

#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

namespace {

QString logName(QDate date)
{
    return "Vaskel_"_L1 + date.toString(u"yyyy-MM-dd"_s) + ".log"_L1;
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

/// Splits text in the user's encoding at the system's line endings.
QStringList linesOf(const QByteArray &text)
{
    QStringList lines = QString::fromLocal8Bit(text).replace("\r\n"_L1, "\n"_L1).split(u'\n');
    lines.removeLast();
    return lines;
}

/// The lines of all logs of a folder; a new file may have begun at midnight.
QStringList linesIn(const QString &folder)
{
    QStringList lines;
    for (const QString &name : namesIn(folder)) {
        lines += linesOf(contentOf(folder + u'/' + name).value());
    }
    return lines;
}

/// Converts to the user's encoding and back, which loses the characters that it lacks.
QString inUsersEncoding(const QString &text)
{
    return QString::fromLocal8Bit(text.toLocal8Bit());
}

/// The line without date and time; empty if it does not start with them.
QString withoutTime(const QString &line)
{
    static const QRegularExpression time(
        QRegularExpression::anchoredPattern(uR"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\] (.*))"));
    return time.match(line).captured(1);
}

QStringList withoutTimes(QStringList lines)
{
    std::transform(lines.begin(), lines.end(), lines.begin(), withoutTime);
    return lines;
}

/// A finished run of the helper program.
struct Run
{
    bool hasEnded = false;
    int exitCode = -1;
    QStringList output;
};

Run runWriter(const QStringList &arguments, const QString &timeZone = u"UTC"_s)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TZ"_s, timeZone);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(LOG_WRITER), arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(60'000)) {
        return {};
    }
    return {process.exitStatus() == QProcess::NormalExit, process.exitCode(),
            linesOf(process.readAllStandardOutput())};
}

/// Starts the helper program, which runs until its standard input is closed.
void startWaitingProgram(QProcess &program)
{
    program.start(QStringLiteral(LOG_WRITER), {testhome::path() + "/other"_L1, u"input"_s});
    QVERIFY(program.waitForReadyRead(60'000));
}

QStringList openFilesOf(qint64 process)
{
    QStringList paths;
    const QDir files(u"/proc/%1/fd"_s.arg(process));
    for (const QFileInfo &file : files.entryInfoList(QDir::AllEntries | QDir::System)) {
        paths.append(file.symLinkTarget());
    }
    return paths;
}

} // namespace

class tst_Logger : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void choosesTheFolder_data();
    void choosesTheFolder();
    void choosesTheDataFolderWithoutAnother();
    void closesTheFolderToOthers_data();
    void closesTheFolderToOthers();
    void saysThatOthersMayReadIt();
    void namesTheFileByTheLocalDay_data();
    void namesTheFileByTheLocalDay();
    void appendsToTheFileOfTheDay();
    void removesExpiredLogs();
    void writesTheLevel_data();
    void writesTheLevel();
    void dropsUnknownTypes();
    void writesTheContext_data();
    void writesTheContext();
    void writesTheMessageAsItIs_data();
    void writesTheMessageAsItIs();
    void flushesEachLine();
    void isNotInheritedByStartedPrograms();
    void canBeRemovedWhileStartedProgramsRunOn();
    void writesToTheConsoleToo();
    void dropsMessagesBeforeInit();
    void writesAFatalMessageBeforeTheEnd();
    void keepsTheLinesOfSeveralThreadsApart();
    void worksWithoutAFile_data();
    void worksWithoutAFile();
    void worksOnAFullDisk_data();
    void worksOnAFullDisk();
    void beginsAFileAtMidnight();

private:
    QString m_folder;
};

void tst_Logger::init()
{
    testhome::reset();
    m_folder = testhome::path() + "/logs/Vaskel"_L1;
}

// Some systems do not remove open files. The log closes its file when it cannot open the next one.
void tst_Logger::cleanup()
{
    const QString obstacle = testhome::writeFile(u"obstacle"_s, {});
    Logger::instance().init(obstacle);
}

void tst_Logger::choosesTheFolder_data()
{
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("folder");

    QTest::newRow("the product's word: as it stands") << u"/Vaskel"_s << u"/Vaskel"_s;
    QTest::newRow("the word in capitals: as it stands") << u"/VASKEL"_s << u"/VASKEL"_s;
    QTest::newRow("another word: a folder in it") << u"/logs"_s << u"/logs/Vaskel"_s;
    QTest::newRow("the word before another: a folder in it")
        << u"/Vaskel/x"_s << u"/Vaskel/x/Vaskel"_s;
    QTest::newRow("a word that ends so: as it stands") << u"/my-vaskel"_s << u"/my-vaskel"_s;
    QTest::newRow("Chinese: a folder in it") << u"/日志 {}"_s << u"/日志 {}/Vaskel"_s;
}

void tst_Logger::choosesTheFolder()
{
    QFETCH(const QString, wanted);
    QFETCH(const QString, folder);

    Logger::instance().init(testhome::path() + wanted);
    const QStringList lines = linesIn(testhome::path() + folder);
    QCOMPARE(withoutTimes(lines), QStringList{"[Vaskel] [info] Logger initialized, log dir: "_L1
                                              + inUsersEncoding(testhome::path() + folder)});
}

void tst_Logger::choosesTheDataFolderWithoutAnother()
{
    const Run run = runWriter({QString(), u"info"_s});
    QCOMPARE(run.exitCode, 0);
    const QString folder = testhome::path() + "/data/Vaskel"_L1;
    QCOMPARE(withoutTimes(linesIn(folder)),
             (QStringList{"[Vaskel] [info] Logger initialized, log dir: "_L1 + folder,
                          u"[Vaskel] [info] [QT] :0  - an info text"_s}));
}

void tst_Logger::closesTheFolderToOthers_data()
{
    QTest::addColumn<bool>("existsBefore");
    QTest::newRow("new folder") << false;
    QTest::newRow("folder of an earlier version") << true;
}

void tst_Logger::closesTheFolderToOthers()
{
    QFETCH(const bool, existsBefore);
    constexpr auto open = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
                          | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    if (existsBefore) {
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::setPermissions(m_folder, open));
    }
    Logger::instance().init(m_folder);
    QCOMPARE(linesIn(m_folder).size(), 1);
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
                            | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFile::permissions(m_folder) & others, QFile::Permissions());
}

// A symbolic link of the user's stays as it is, and so does its target.
void tst_Logger::saysThatOthersMayReadIt()
{
    const QString target = testhome::path() + "/target"_L1;
    QVERIFY(QDir().mkpath(target));
    QVERIFY(QDir().mkpath(QFileInfo(m_folder).path()));
    QVERIFY(QFile::link(target, m_folder));
    Logger::instance().init(m_folder);
    QCOMPARE(withoutTimes(linesIn(m_folder)).mid(1),
             QStringList{u"[Vaskel] [warning] Other users may be able to read the log"_s});
}

void tst_Logger::namesTheFileByTheLocalDay_data()
{
    QTest::addColumn<QString>("timeZone");
    QTest::addColumn<int>("hours");

    QTest::newRow("14 hours east") << u"EAST-14"_s << 14;
    QTest::newRow("12 hours west") << u"WEST+12"_s << -12;
}

void tst_Logger::namesTheFileByTheLocalDay()
{
    QFETCH(const QString, timeZone);
    QFETCH(const int, hours);

    const auto localDay = [hours] {
        return QDateTime::currentDateTimeUtc().addSecs(3600 * hours).date();
    };
    const QDate before = localDay();
    QCOMPARE(runWriter({m_folder}, timeZone).exitCode, 0);
    const QStringList names = namesIn(m_folder);
    QVERIFY2(names == QStringList{logName(before)} || names == QStringList{logName(localDay())},
             qUtf8Printable(names.join(u' ')));
}

void tst_Logger::appendsToTheFileOfTheDay()
{
    Logger::instance().init(m_folder);
    Logger::instance().init(m_folder);
    QCOMPARE(linesIn(m_folder).size(), 2);
}

void tst_Logger::removesExpiredLogs()
{
    // All dates are far enough from the limit for midnight not to matter.
    const QDate today = QDate::currentDate();
    const QString expired = logName(today.addDays(-9));
    const QString kept = logName(today.addDays(-6));
    testhome::writeFile("logs/Vaskel/"_L1 + expired, "old");
    testhome::writeFile("logs/Vaskel/"_L1 + kept, "younger");

    Logger::instance().init(m_folder);
    QVERIFY(!namesIn(m_folder).contains(expired));
    QVERIFY(namesIn(m_folder).contains(kept));
}

void tst_Logger::writesTheLevel_data()
{
    QTest::addColumn<QtMsgType>("type");
    QTest::addColumn<QString>("level");

    QTest::newRow("debug: debug") << QtDebugMsg << u"debug"_s;
    QTest::newRow("info: info") << QtInfoMsg << u"info"_s;
    QTest::newRow("warning: warn") << QtWarningMsg << u"warning"_s;
    QTest::newRow("critical: err") << QtCriticalMsg << u"error"_s;
    QTest::newRow("fatal: err") << QtFatalMsg << u"error"_s;
}

void tst_Logger::writesTheLevel()
{
    QFETCH(const QtMsgType, type);
    QFETCH(const QString, level);

    Logger::instance().init(m_folder);
    qtMessageHandler(type, {}, u"text"_s);
    QCOMPARE(withoutTime(linesIn(m_folder).last()),
             QString("[Vaskel] ["_L1 + level + "] [QT] :0  - text"_L1));
}

void tst_Logger::dropsUnknownTypes()
{
    Logger::instance().init(m_folder);
    qtMessageHandler(QtMsgType(QtInfoMsg + 1), {}, u"text"_s);
    QCOMPARE(linesIn(m_folder).size(), 1);
}

void tst_Logger::writesTheContext_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("line");
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<QString>("written");

    QTest::newRow("all") << "ui/A.cpp"_ba << 12 << "void A::b(int)"_ba
                         << u"ui/A.cpp:12 void A::b(int)"_s;
    QTest::newRow("no function: empty") << "ui/A.cpp"_ba << 12 << QByteArray() << u"ui/A.cpp:12 "_s;
    QTest::newRow("no file: empty") << QByteArray() << 12 << "b()"_ba << u":12 b()"_s;
    QTest::newRow("neither: both empty, line 0") << QByteArray() << 0 << QByteArray() << u":0 "_s;
}

void tst_Logger::writesTheContext()
{
    QFETCH(const QByteArray, file);
    QFETCH(const int, line);
    QFETCH(const QByteArray, function);
    QFETCH(const QString, written);

    const auto orNull = [](const QByteArray &text) {
        return text.isNull() ? nullptr : text.constData();
    };
    const QMessageLogContext context(orNull(file), line, orNull(function), "default");
    Logger::instance().init(m_folder);
    qtMessageHandler(QtInfoMsg, context, u"text"_s);
    QCOMPARE(withoutTime(linesIn(m_folder).last()),
             QString("[Vaskel] [info] [QT] "_L1 + written + " - text"_L1));
}

void tst_Logger::writesTheMessageAsItIs_data()
{
    QTest::addColumn<QString>("message");

    QTest::newRow("Chinese") << u"记事本"_s;
    QTest::newRow("beyond the first plane") << u"😀"_s;
    QTest::newRow("braces and percent signs") << u"{} {0} {:d} { %s %1"_s;
    QTest::newRow("empty") << QString();
    QTest::newRow("a null character") << u"a\0b"_s;
    QTest::newRow("10,000 characters") << QString(10'000, u'x');
}

void tst_Logger::writesTheMessageAsItIs()
{
    QFETCH(const QString, message);

    Logger::instance().init(m_folder);
    qtMessageHandler(QtInfoMsg, {}, message);
    QCOMPARE(withoutTime(linesIn(m_folder).last()),
             QString("[Vaskel] [info] [QT] :0  - "_L1 + inUsersEncoding(message)));
}

void tst_Logger::flushesEachLine()
{
    Logger::instance().init(m_folder);
    QCOMPARE(linesIn(m_folder).size(), 1);
    for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg}) {
        const qsizetype before = linesIn(m_folder).size();
        qtMessageHandler(type, {}, u"text"_s);
        QCOMPARE(linesIn(m_folder).size(), before + 1);
    }
}

void tst_Logger::isNotInheritedByStartedPrograms()
{
    Logger::instance().init(m_folder);
    const QString path = m_folder + u'/' + namesIn(m_folder).constFirst();
    QVERIFY(openFilesOf(QCoreApplication::applicationPid()).contains(path));
    QProcess started;
    startWaitingProgram(started);
    QVERIFY(!QTest::currentTestFailed());
    const QStringList files = openFilesOf(started.processId());
    QVERIFY(!files.isEmpty());
    QVERIFY2(!files.contains(path), qPrintable(files.join(u'\n')));
    started.closeWriteChannel();
    QVERIFY(started.waitForFinished());
}

// Windows refuses to remove a file that any process has open.
void tst_Logger::canBeRemovedWhileStartedProgramsRunOn()
{
    Logger::instance().init(m_folder);
    const QString path = m_folder + u'/' + namesIn(m_folder).constFirst();
    QProcess started;
    startWaitingProgram(started);
    QVERIFY(!QTest::currentTestFailed());
    Logger::instance().init(testhome::writeFile(u"obstacle"_s, {}));
    QVERIFY(QFile::remove(path));
    started.closeWriteChannel();
    QVERIFY(started.waitForFinished());
}

void tst_Logger::writesToTheConsoleToo()
{
    const Run run = runWriter({m_folder, u"debug"_s, u"info"_s, u"warning"_s, u"critical"_s});
    QVERIFY(run.hasEnded);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(withoutTimes(run.output),
             (QStringList{"[Vaskel] [info] Logger initialized, log dir: "_L1 + m_folder,
                          u"[Vaskel] [debug] [QT] :0  - a debug text"_s,
                          u"[Vaskel] [info] [QT] :0  - an info text"_s,
                          u"[Vaskel] [warning] [QT] :0  - a warning text"_s,
                          u"[Vaskel] [error] [QT] :0  - a critical text"_s}));
    QCOMPARE(linesIn(m_folder), run.output);
}

void tst_Logger::dropsMessagesBeforeInit()
{
    const Run run = runWriter({m_folder, u"early"_s, u"info"_s});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.output.size(), 2);
    QCOMPARE(linesIn(m_folder), run.output);
    QVERIFY(!run.output.join(u'\n').contains("early"_L1));
}

void tst_Logger::writesAFatalMessageBeforeTheEnd()
{
    const Run run = runWriter({m_folder, u"fatal"_s, u"info"_s});
    QVERIFY(!run.hasEnded || run.exitCode != 0);
    QCOMPARE(withoutTime(linesIn(m_folder).last()), u"[Vaskel] [error] [QT] :0  - a fatal text"_s);
}

void tst_Logger::keepsTheLinesOfSeveralThreadsApart()
{
    const Run run = runWriter({m_folder, u"threads"_s});
    QVERIFY(run.hasEnded);
    QCOMPARE(run.exitCode, 0);

    for (const QStringList &output : {withoutTimes(run.output), withoutTimes(linesIn(m_folder))}) {
        QCOMPARE(output.size(), 1 + 8 * 200);
        QList<int> next(8, 0);
        for (const QString &line : output.sliced(1)) {
            const QString prefix = u"[Vaskel] [info] [QT] :0  - "_s;
            QVERIFY2(line.startsWith(prefix), qUtf8Printable(line));
            const QStringList numbers = line.sliced(prefix.size()).split(u'.');
            QCOMPARE(numbers.size(), 2);
            QCOMPARE(numbers.at(1).toInt(), next[numbers.at(0).toInt()]++);
        }
    }
}

void tst_Logger::worksWithoutAFile_data()
{
    QTest::addColumn<QString>("obstacle");

    QTest::newRow("the folder cannot be created") << u"file"_s;
    QTest::newRow("a folder has the file's name") << u"folder"_s;
}

void tst_Logger::worksWithoutAFile()
{
    QFETCH(const QString, obstacle);

    const QDate today = QDate::currentDate();
    if (obstacle == "file"_L1) {
        testhome::writeFile(u"logs"_s, {});
    } else {
        QDir().mkpath(m_folder);
        // Also tomorrow's file, since midnight may come before the log opens it.
        for (const QDate day : {today, today.addDays(1)}) {
            const QString path = m_folder + u'/' + logName(day);
            QVERIFY(obstacle == "full"_L1 ? QFile::link(u"/dev/full"_s, path) : QDir().mkdir(path));
        }
    }

    const Run run = runWriter({m_folder, u"info"_s, u"warning"_s});
    QVERIFY(run.hasEnded);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(withoutTimes(run.output),
             (QStringList{"[Vaskel] [info] Logger initialized, log dir: "_L1 + m_folder,
                          u"[Vaskel] [info] [QT] :0  - an info text"_s,
                          u"[Vaskel] [warning] [QT] :0  - a warning text"_s}));
}

void tst_Logger::worksOnAFullDisk_data()
{
    QTest::addColumn<QString>("obstacle");

    QTest::newRow("the disk is full") << u"full"_s;
}

void tst_Logger::worksOnAFullDisk()
{
    worksWithoutAFile();
}

void tst_Logger::beginsAFileAtMidnight()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TZ"_s, u"UTC"_s);
    // The address sanitizer reports preloaded libraries as an error otherwise.
    environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
    // The clock stands still until it is set, so that midnight does not come before the first line.
    environment.insert(u"FAKETIME_TIMESTAMP_FILE"_s,
                       testhome::writeFile(u"clock"_s, "2024-02-28 23:59:57\n"));
    environment.insert(u"FAKETIME_NO_CACHE"_s, u"1"_s);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(u"faketime"_s,
                  {u"-f"_s, u"+0"_s, u"env"_s, u"-u"_s, u"FAKETIME"_s, QStringLiteral(LOG_WRITER),
                   m_folder, u"info"_s, u"midnight"_s, u"warning"_s});
    QTRY_VERIFY_WITH_TIMEOUT(linesIn(m_folder).join(u' ').contains(u"an info text"_s), 60'000);
    QSaveFile clock(testhome::path() + "/clock"_L1); // never seen half written
    QVERIFY(clock.open(QIODevice::WriteOnly));
    clock.write("2024-02-29 00:00:01\n");
    QVERIFY(clock.commit());
    QVERIFY(process.waitForFinished(60'000));
    QCOMPARE(process.exitCode(), 0);

    QCOMPARE(namesIn(m_folder),
             (QStringList{u"Vaskel_2024-02-28.log"_s, u"Vaskel_2024-02-29.log"_s}));
    QCOMPARE(withoutTimes(linesOf(contentOf(m_folder + "/Vaskel_2024-02-28.log"_L1).value())),
             (QStringList{"[Vaskel] [info] Logger initialized, log dir: "_L1 + m_folder,
                          u"[Vaskel] [info] [QT] :0  - an info text"_s}));
    QCOMPARE(withoutTimes(linesOf(contentOf(m_folder + "/Vaskel_2024-02-29.log"_L1).value())),
             QStringList{u"[Vaskel] [warning] [QT] :0  - a warning text"_s});
}

VASKEL_TEST(tst_Logger, QCoreApplication)
#include "tst_Logger.moc"
