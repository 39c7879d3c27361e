// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/linux/HomeDatabase.h"
#include "platform/linux/Plocate.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QTest>

#include <cstdio>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using filecontent::contentOf;
namespace fileindex = platform::fileindex;

namespace {

enum Error : unsigned {
    CannotStart = 101,
    Failed = 102,
    TooSlow = 103,
    Building = 104,
    CannotBuild = 105
};

constexpr int day = 24 * 60 * 60;
constexpr int patience = 200'000; // milliseconds, for what is done at the lowest priority

QString addFile(const QString &relativePath)
{
    return testhome::writeFile(u"files/"_s + relativePath, {});
}

QString homeDatabase()
{
    return platform::HomeDatabase::filePath();
}

fileindex::Answer search(const QString &text)
{
    return fileindex::search(text, 50);
}

/// The paths of the results, sorted, or the number of the error.
QStringList resultsOf(const QString &text)
{
    fileindex::Answer answer = search(text);
    if (answer.error) {
        return {u"error %1"_s.arg(*answer.error)};
    }
    answer.paths.sort();
    return answer.paths;
}

QByteArray quoted(const QString &path)
{
    return '\'' + QFile::encodeName(path) + '\'';
}

QString recordPath()
{
    return plocate::folder() + "/record"_L1;
}

/// Notes what each of its calls was given, one NUL behind each argument, and finds nothing.
void installRecorder()
{
    plocate::replaceProgram(R"(printf '%s\0' "$@" >>)" + quoted(recordPath()) + "\nexit 1");
}

QStringList recordedArguments()
{
    QStringList arguments = QString::fromUtf8(contentOf(recordPath()).value()).split(QChar(u'\0'));
    arguments.removeLast();
    return arguments;
}

/// The search patterns of the one call that was recorded.
QStringList recordedPatterns()
{
    const QStringList arguments = recordedArguments();
    return arguments.mid(arguments.indexOf(u"--"_s) + 1);
}

void setAge(const QString &path, int seconds)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds),
                             QFileDevice::FileModificationTime));
}

} // namespace

class tst_FileIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void isNamedAfterItsProgram();
    void findsWhatAUserWouldExpect_data();
    void findsWhatAUserWouldExpect();
    void findsNamesOfAnyKind_data();
    void findsNamesOfAnyKind();
    void hasNoPathForANameThatIsNoUnicode();
    void findsFolders();
    void findsAFileThatIsGone();
    void givesTheTextAsData_data();
    void givesTheTextAsData();
    void limitsTheResults();
    void worksInAnyLocale();
    void failsOnATextThatNoProgramCanBeGiven();

    void failsWhereTheProgramCannotBeStarted();
    void failsWhereTheProgramFails_data();
    void failsWhereTheProgramFails();
    void waitsTwoSecondsForASlowProgram();
    void recoversFromAFailure();

    void asksTheSystemsDatabaseFirst();
    void buildsADatabaseOfTheHome();
    void keepsTheDatabaseOfTheHomeToTheUser();
    void findsNothingInTheHome();
    void saysThatTheDatabaseIsBeingBuilt();
    void keepsToTheTimeLimitWhileBuilding();
    void doesNotCallBackForAFailedBuild();
    void doesNotCallBackForARenewal();
    void doesNotCallBackIfASearchNoticesTheEnd();
    void usesAFreshDatabase();
    void renewsAnOldDatabaseInTheBackground_data();
    void renewsAnOldDatabaseInTheBackground();
    void buildsADamagedDatabaseAnew_data();
    void buildsADamagedDatabaseAnew();
    void saysThatNoDatabaseCanBeBuilt_data();
    void saysThatNoDatabaseCanBeBuilt();
    void triesAgainToBuildADatabase();
    void takesAHomeWithAnyName();
    void doesNotMindAMissingDatabaseOfTheUsersOwn();
};

void tst_FileIndex::init()
{
    testhome::reset();
    plocate::install();
}

void tst_FileIndex::isNamedAfterItsProgram()
{
    QCOMPARE(fileindex::name(), u"plocate"_s);
    plocate::remove();
    QCOMPARE(fileindex::name(), QString());
}

void tst_FileIndex::findsWhatAUserWouldExpect_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("found");

    const QString report = u"docs/Yearly Report.txt"_s;
    const QString draft = u"docs/report[1].txt"_s;
    const QString list = u"docs/what?.md"_s;
    const QString star = u"docs/5*3.md"_s;
    const QString backslash = u"docs/back\\slash.md"_s;
    const QString umlaut = u"docs/Äpfel.md"_s;
    const QString chinese = u"docs/文件.md"_s;
    const QString option = u"docs/--help.md"_s;

    const auto row = [](const char *name, const QString &text, const QStringList &found) {
        QTest::newRow(name) << text << found;
    };
    row("part of a name, any case", u"REPORT"_s, {report, draft});
    row("both words", u"report yearly"_s, {report});
    row("blanks around", u"  yearly \t"_s, {report});
    row("a wide blank", u"yearly\u3000report"_s, {report});
    row("brackets are letters", u"report[1]"_s, {draft});
    row("an open bracket", u"t["_s, {draft});
    row("a backslash is a letter", u"k\\s"_s, {backslash});
    row("a backslash at the end", u"back\\"_s, {backslash});
    row("a star stands for any letters", u"*eport.TXT"_s, {report});
    row("a question mark stands for one", u"report?1?.txt"_s, {draft});
    row("a pattern is for the whole name", u"eport*"_s, {});
    row("a pattern with a bracket", u"*[1]*"_s, {draft});
    row("a question mark stands for itself too", u"what?.md"_s, {list});
    row("a star stands for itself too", u"5*3.md"_s, {star});
    row("a pattern beside a word", u"*.txt yearly"_s, {report});
    row("letters beyond ASCII, any case", u"äPFEL"_s, {umlaut});
    row("Chinese", u"文"_s, {chinese});
    row("what looks like an option", u"--help"_s, {option});
    row("folders do not count", u"docs report"_s, {});
    row("unless there is a slash", u"docs/ report"_s, {report, draft});
    row("across a slash", u"CS/report"_s, {draft});
    row("a pattern with a slash", u"docs/rep*.txt"_s, {draft});
    row("a pattern beside a slash", u"docs/ *.txt"_s, {report, draft});
    row("another pattern beside a slash", u"docs/ rep*"_s, {draft});
    row("a regular expression is none", u"rep.rt"_s, {});
    row("quotation marks are letters", u"\"yearly report\""_s, {});
}

void tst_FileIndex::findsWhatAUserWouldExpect()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, found);
    const QStringList names = {
        u"Yearly Report.txt"_s, u"report[1].txt"_s, u"what?.md"_s, u"5*3.md"_s,
        u"back\\slash.md"_s,    u"Äpfel.md"_s,      u"文件.md"_s,  u"--help.md"_s};
    for (const QString &name : names) {
        addFile("docs/"_L1 + name);
    }
    plocate::updateSystemDatabase();

    QStringList expected;
    for (const QString &name : found) {
        expected.append(testhome::path() + "/files/"_L1 + name);
    }
    expected.sort();
    QCOMPARE(resultsOf(text), expected);
}

void tst_FileIndex::findsNamesOfAnyKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");

    QTest::newRow("line feed") << u"first\nsecond"_s << u"first"_s;
    QTest::newRow("line feed in the text") << u"first\nsecond"_s << u"first\nsecond"_s;
    QTest::newRow("255 bytes") << QString(255, u'x') << QString(255, u'x');
    QTest::newRow("quotation mark") << u"it's"_s << u"t's"_s;
    QTest::newRow("blanks at both ends") << u" name "_s << u" name "_s;
    QTest::newRow("dollar") << u"$(HOME)"_s << u"$(HOME)"_s;
}

void tst_FileIndex::findsNamesOfAnyKind()
{
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    const QString path = addFile(name);
    plocate::updateSystemDatabase();
    QCOMPARE(resultsOf(text), QStringList(path));
}

void tst_FileIndex::hasNoPathForANameThatIsNoUnicode()
{
    const QString good = addFile(u"name 1"_s);
    const QByteArray bad = QFile::encodeName(testhome::path()) + "/files/name \xff\xfe";
    FILE *const file = std::fopen(bad.constData(), "w");
    QVERIFY(file);
    std::fclose(file);
    plocate::updateSystemDatabase();
    QCOMPARE(std::remove(bad.constData()), 0); // QFile could not

    QCOMPARE(resultsOf(u"name"_s), QStringList({QString(), good}));
}

void tst_FileIndex::findsFolders()
{
    addFile(u"folder/file"_s);
    plocate::updateSystemDatabase();
    QCOMPARE(resultsOf(u"folder"_s), QStringList(testhome::path() + "/files/folder"_L1));
}

void tst_FileIndex::findsAFileThatIsGone()
{
    const QString path = addFile(u"name"_s);
    plocate::updateSystemDatabase();
    QVERIFY(QFile::remove(path));
    QCOMPARE(resultsOf(u"name"_s), QStringList(path));
}

void tst_FileIndex::givesTheTextAsData_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("patterns");

    QTest::newRow("options") << u"-d /etc --help -0"_s
                             << QStringList({u"-d"_s, u"/etc"_s, u"--help"_s, u"-0"_s});
    QTest::newRow("end of the options") << u"-- x"_s << QStringList({u"--"_s, u"x"_s});
    QTest::newRow("a command") << u"a;touch${IFS}x|`id`&"_s
                               << QStringList(u"a;touch${IFS}x|`id`&"_s);
    QTest::newRow("quotation marks") << u"\"a 'b"_s << QStringList({u"\"a"_s, u"'b"_s});
    QTest::newRow("line feed") << u"a\nb"_s << QStringList({u"a"_s, u"b"_s});
}

void tst_FileIndex::givesTheTextAsData()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, patterns);
    installRecorder();

    QCOMPARE(resultsOf(text), QStringList());
    QCOMPARE(recordedPatterns(), patterns);
}

void tst_FileIndex::limitsTheResults()
{
    installRecorder();
    search(u"name"_s);
    const QStringList arguments = recordedArguments();
    const qsizetype limit = arguments.indexOf(u"--limit"_s);
    QVERIFY(limit >= 0 && limit < arguments.indexOf(u"--"_s));
    QCOMPARE(arguments.at(limit + 1), u"50"_s);
}

void tst_FileIndex::worksInAnyLocale()
{
    const QString path = addFile(u"Äpfel"_s);
    plocate::updateSystemDatabase();
    const QByteArray locale = qgetenv("LC_ALL");
    qputenv("LC_ALL", "C");
    const QStringList found = resultsOf(u"äpfel"_s);
    qputenv("LC_ALL", locale);
    QCOMPARE(found, QStringList(path));
}

void tst_FileIndex::failsOnATextThatNoProgramCanBeGiven()
{
    plocate::updateSystemDatabase();
    QCOMPARE(resultsOf(QString(1000000, u'x')), QStringList(u"error %1"_s.arg(CannotStart)));
}

void tst_FileIndex::failsWhereTheProgramCannotBeStarted()
{
    testhome::writeFile(u"plocate/bin/plocate"_s, "no program at all");
    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(CannotStart)));
    plocate::remove();
    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(CannotStart)));
}

void tst_FileIndex::failsWhereTheProgramFails_data()
{
    QTest::addColumn<QByteArray>("script");

    QTest::newRow("exit status") << QByteArray("exit 2");
    QTest::newRow("message") << QByteArray("echo message >&2; exit 1");
    QTest::newRow("crash") << QByteArray("kill -SEGV $$");
}

void tst_FileIndex::failsWhereTheProgramFails()
{
    QFETCH(const QByteArray, script);
    plocate::replaceProgram(script);
    // Until the database of the home folder is built, at the lowest priority, the search has
    // another error. Keep the first failure: a further search would build the database anew.
    fileindex::Answer answer;
    const auto fails = [&answer] {
        answer = search(u"name"_s);
        return answer.error == Failed;
    };
    QVERIFY(QTest::qWaitFor(fails, 60'000));
    QCOMPARE(answer.paths, QStringList());
}

void tst_FileIndex::waitsTwoSecondsForASlowProgram()
{
    plocate::replaceProgram("exec /bin/sleep 60");
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(TooSlow)));
    QVERIFY(clock.elapsed() >= 1900);
    QVERIFY(clock.elapsed() < 10000); // a busy machine is slow as well
}

void tst_FileIndex::recoversFromAFailure()
{
    const QString path = addFile(u"name"_s);
    plocate::updateSystemDatabase();
    plocate::replaceProgram("exit 2");
    QVERIFY(search(u"name"_s).error);
    plocate::install();
    const fileindex::Answer answer = search(u"name"_s);
    QCOMPARE(answer.paths, QStringList(path));
    QVERIFY(!answer.error);
}

void tst_FileIndex::asksTheSystemsDatabaseFirst()
{
    const QString path = addFile(u"name 1"_s);
    plocate::updateSystemDatabase();
    addFile(u"name 2"_s);
    QCOMPARE(resultsOf(u"name"_s), QStringList(path));
    QCOMPARE(resultsOf(u"nowhere"_s), QStringList());
    QVERIFY(!QFile::exists(homeDatabase()));
}

void tst_FileIndex::buildsADatabaseOfTheHome()
{
    const QString path = addFile(u"name"_s);
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
    QVERIFY(QFile::exists(homeDatabase()));
    QVERIFY(homeDatabase().startsWith(testhome::path() + "/cache/"_L1));
    QVERIFY(!QFile::exists(plocate::systemDatabase()));
}

void tst_FileIndex::keepsTheDatabaseOfTheHomeToTheUser()
{
    addFile(u"name"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!search(u"name"_s).error, patience);
    struct stat status = {};
    QCOMPARE(::stat(QFile::encodeName(homeDatabase()).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0600));
    const QString folder = QFileInfo(homeDatabase()).path();
    QCOMPARE(::stat(QFile::encodeName(folder).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0700));
}

void tst_FileIndex::findsNothingInTheHome()
{
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"no such name"_s), QStringList(), patience);
    QVERIFY(QFile::exists(homeDatabase()));
}

void tst_FileIndex::saysThatTheDatabaseIsBeingBuilt()
{
    const QString path = addFile(u"name"_s);
    const QString signal = plocate::folder() + "/go"_L1;
    plocate::replaceUpdater("while [ ! -e " + quoted(signal) + " ]; do /bin/sleep 0.05; done\n"
                            + plocate::realUpdater());

    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(Building)));
    // Later ones do not wait at all.
    QElapsedTimer clock;
    clock.start();
    for (int count = 0; count < 5; ++count) {
        QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(Building)));
    }
    QVERIFY(clock.elapsed() < 4000);

    testhome::writeFile(u"plocate/go"_s, {});
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
}

void tst_FileIndex::keepsToTheTimeLimitWhileBuilding()
{
    plocate::replaceProgram("/bin/sleep 1.7; echo message >&2; exit 1");
    plocate::replaceUpdater("exec /bin/sleep 3");
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(Building)));
    QVERIFY(clock.elapsed() < 2600); // without the limit it would be 2700
}

void tst_FileIndex::doesNotCallBackForAFailedBuild()
{
    QObject context;
    int calls = 0;
    fileindex::watch(&context, [&calls] { ++calls; });
    plocate::holdUpdater("exit 1");
    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(Building)));
    const QPointer<QProcess> build = QCoreApplication::instance()->findChild<QProcess *>();
    QVERIFY(build);
    plocate::releaseUpdater();
    QTRY_COMPARE_WITH_TIMEOUT(build->state(), QProcess::NotRunning, patience);
    QCoreApplication::processEvents();
    QCOMPARE(calls, 0);
}

void tst_FileIndex::doesNotCallBackForARenewal()
{
    const QString path = addFile(u"name 1"_s);
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
    const QString newPath = addFile(u"name 2"_s);
    setAge(homeDatabase(), day + 60);
    QObject context;
    int calls = 0;
    fileindex::watch(&context, [&calls] { ++calls; });
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList({path, newPath}), patience);
    QCoreApplication::processEvents();
    QCOMPARE(calls, 0);
}

void tst_FileIndex::doesNotCallBackIfASearchNoticesTheEnd()
{
    const QString path = addFile(u"name"_s);
    QObject context;
    int calls = 0;
    fileindex::watch(&context, [&calls] { ++calls; });
    plocate::holdUpdater(plocate::realUpdater());
    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(Building)));
    plocate::releaseUpdater();
    const QDeadlineTimer deadline(patience);
    while (resultsOf(u"name"_s) != QStringList(path) && !deadline.hasExpired()) {
    }
    const QPointer<QProcess> build = QCoreApplication::instance()->findChild<QProcess *>();
    QVERIFY(build);
    QTRY_COMPARE_WITH_TIMEOUT(build->state(), QProcess::NotRunning, patience);
    QCoreApplication::processEvents();
    QCOMPARE(calls, 0); // that search needs no repetition
}

void tst_FileIndex::usesAFreshDatabase()
{
    const QString path = addFile(u"name 1"_s);
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
    addFile(u"name 2"_s);
    setAge(homeDatabase(), day - 60);
    plocate::replaceUpdater("echo called >" + quoted(recordPath()));
    QCOMPARE(resultsOf(u"name"_s), QStringList(path));
    QCOMPARE(resultsOf(u"name"_s), QStringList(path));
    QVERIFY(!QFile::exists(recordPath()));
}

void tst_FileIndex::renewsAnOldDatabaseInTheBackground_data()
{
    QTest::addColumn<int>("age");

    QTest::newRow("more than a day") << day + 60;
    QTest::newRow("from the future") << -day;
}

void tst_FileIndex::renewsAnOldDatabaseInTheBackground()
{
    QFETCH(const int, age);
    const QString path = addFile(u"name 1"_s);
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
    const QString newPath = addFile(u"name 2"_s);
    setAge(homeDatabase(), age);
    const QString signal = plocate::folder() + "/go"_L1;
    plocate::replaceUpdater("while [ ! -e " + quoted(signal) + " ]; do /bin/sleep 0.05; done\n"
                            + plocate::realUpdater());

    // As long as the new one is being built, the old one answers.
    QCOMPARE(resultsOf(u"name"_s), QStringList(path));
    QCOMPARE(resultsOf(u"name"_s), QStringList(path));
    testhome::writeFile(u"plocate/go"_s, {});
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList({path, newPath}), patience);
}

void tst_FileIndex::buildsADamagedDatabaseAnew_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("nonsense") << QByteArray("nonsense");
    QTest::newRow("longer nonsense") << QByteArray(100000, 'x');
}

void tst_FileIndex::buildsADamagedDatabaseAnew()
{
    QFETCH(const QByteArray, content);
    const QString path = addFile(u"name"_s);
    testhome::writeFile(QDir(testhome::path()).relativeFilePath(homeDatabase()), content);
    QCOMPARE(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(Failed)));
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
}

void tst_FileIndex::saysThatNoDatabaseCanBeBuilt_data()
{
    QTest::addColumn<QByteArray>("updater");
    QTest::addColumn<QString>("fileInTheWay");

    QTest::newRow("the updater fails") << QByteArray("exit 1") << QString();
    QTest::newRow("it only says that it succeeded") << QByteArray("exit 0") << QString();
    QTest::newRow("no folder") << plocate::realUpdater() << u"cache/tst_FileIndex"_s;
}

void tst_FileIndex::saysThatNoDatabaseCanBeBuilt()
{
    QFETCH(const QByteArray, updater);
    QFETCH(const QString, fileInTheWay);
    plocate::replaceUpdater(updater);
    if (!fileInTheWay.isEmpty()) {
        testhome::writeFile(fileInTheWay, "in the way");
    }
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(CannotBuild)),
                              patience);
}

void tst_FileIndex::triesAgainToBuildADatabase()
{
    const QString path = addFile(u"name"_s);
    plocate::replaceUpdater("exit 1");
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(u"error %1"_s.arg(CannotBuild)),
                              patience);
    plocate::install();
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
}

void tst_FileIndex::takesAHomeWithAnyName()
{
    const QString home = testhome::path() + "/a home: \\ 'new'"_L1;
    QVERIFY(QDir().mkpath(home));
    QFile file(home + "/name"_L1);
    QVERIFY(file.open(QIODevice::WriteOnly));
    qputenv("HOME", QFile::encodeName(home));
    qputenv("XDG_CACHE_HOME", QFile::encodeName(home) + "/cache");
    const QString expected = file.fileName();
    QStringList found;
    const QDeadlineTimer deadline(patience);
    while (found != QStringList(expected) && !deadline.hasExpired()) {
        found = resultsOf(u"name"_s);
    }
    qputenv("HOME", QFile::encodeName(testhome::path()));
    qputenv("XDG_CACHE_HOME", QFile::encodeName(testhome::path()) + "/cache");
    QCOMPARE(found, QStringList(expected));
}

void tst_FileIndex::doesNotMindAMissingDatabaseOfTheUsersOwn()
{
    const QString path = addFile(u"name"_s);
    qputenv("LOCATE_PATH", "/no/such/database");
    QTRY_COMPARE_WITH_TIMEOUT(resultsOf(u"name"_s), QStringList(path), patience);
    QCOMPARE(resultsOf(u"no such name"_s), QStringList());
}

VASKEL_TEST(tst_FileIndex, QCoreApplication)
#include "tst_FileIndex.moc"
