// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskStorage.h"

#include "support/JsonReason.h"
#include "support/TestProgram.h"
#include "tasks/TaskFile.h"
#include "tasks/TaskRepository.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// JSON from a text with apostrophes in place of quotation marks, which would need escapes here.
QByteArray json(QByteArray text)
{
    return text.replace('\'', '"');
}

const QByteArray bankTask = json("{'completed':false,'createdTime':'2026-03-01T09:30:15',"
                                 "'dueTime':'','id':'6b1f0c2e-8a44-4a57-9c1d-2f6e8d1a7b30',"
                                 "'note':'','parentId':'','priority':0,'title':'Call the bank',"
                                 "'updatedTime':'2026-03-01T09:30:15'}");
// Contains characters that need an escape and characters that must not have one.
const QByteArray fullTask = json("{'completed':true,'createdTime':'1999-12-31T23:59:59',"
                                 "'dueTime':'2026-04-01T00:00:00',"
                                 "'id':'d0c7a9e4-1111-4222-8333-444455556666',"
                                 "'note':'one\\ntwo\\t\\'three\\' \\\\ / \\u0001',"
                                 "'parentId':'6b1f0c2e-8a44-4a57-9c1d-2f6e8d1a7b30',"
                                 "'priority':-2,'title':'写信 é 😀 <&>',"
                                 "'updatedTime':'2026-03-02T10:00:00'}");

constexpr qint64 hundredMegabytes = 100 * 1024 * 1024;

Task makeTask(const QString &id)
{
    Task task;
    task.id = id;
    return task;
}

} // namespace

class tst_TaskStorage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void missingFileIsAnEmptyList();
    void unreadableFileIsReported();
    void logsWhatItLoaded();
    void writesTheBytesThatItRead_data();
    void writesTheBytesThatItRead();
    void writesEachTaskOnce();
    void makesTheFolder();
    void leavesNoOtherFiles();
    void folderInPlaceOfTheFileIsReported();
    void keepsTheOrderWithinOneSecondByIdAfterALoad();
    void refusesDataThatIsNoArray_data();
    void refusesDataThatIsNoArray();
    void refusesATruncatedFile();
    void dropsElementsWithoutAnId();
    void readsAHundredMegabytes_data();
    void readsAHundredMegabytes();

private:
    const TaskStorage m_storage{taskfile::path()};
};

void tst_TaskStorage::init()
{
    testhome::reset();
}

void tst_TaskStorage::missingFileIsAnEmptyList()
{
    TaskRepository repository;
    QTest::ignoreMessage(
        QtDebugMsg,
        qPrintable(u"Task storage not found, starting fresh: \"%1\""_s.arg(taskfile::path())));
    QVERIFY(m_storage.load(&repository));
    QVERIFY(repository.allTasks().isEmpty());
    QVERIFY(!QFile::exists(taskfile::path()));

    QVERIFY(m_storage.save(&repository));
    QCOMPARE(taskfile::bytes(), "[]"_ba);
}

void tst_TaskStorage::unreadableFileIsReported()
{
    QVERIFY(QDir().mkpath(taskfile::path()));
    TaskRepository repository;
    repository.addTask(makeTask(u"kept"_s));
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(u"Cannot open task storage: \"%1\""_s.arg(taskfile::path())));
    QVERIFY(!m_storage.load(&repository));
    QCOMPARE(repository.allTasks().size(), 1);
}

void tst_TaskStorage::logsWhatItLoaded()
{
    taskfile::write("[1,"_ba + bankTask + ',' + fullTask + ']');
    TaskRepository repository;
    QTest::ignoreMessage(QtDebugMsg,
                         qPrintable(u"Loaded 2 tasks from \"%1\""_s.arg(taskfile::path())));
    QVERIFY(m_storage.load(&repository));
}

void tst_TaskStorage::writesTheBytesThatItRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no task") << "[]"_ba;
    QTest::newRow("plain task") << '[' + bankTask + ']';
    QTest::newRow("every key filled") << '[' + fullTask + ']';
}

void tst_TaskStorage::writesTheBytesThatItRead()
{
    QFETCH(const QByteArray, content);
    taskfile::write(content);
    TaskRepository repository;
    QVERIFY(m_storage.load(&repository));
    QVERIFY(QFile::remove(taskfile::path()));
    QVERIFY(m_storage.save(&repository));
    QCOMPARE(taskfile::bytes(), content);
}

void tst_TaskStorage::writesEachTaskOnce()
{
    taskfile::write(" [\n"_ba + bankTask + " , " + fullTask + " ]\n");
    TaskRepository repository;
    QVERIFY(m_storage.load(&repository));
    QVERIFY(m_storage.save(&repository));

    const QByteArray oneWay = '[' + bankTask + ',' + fullTask + ']';
    const QByteArray otherWay = '[' + fullTask + ',' + bankTask + ']';
    QVERIFY2(taskfile::bytes() == oneWay || taskfile::bytes() == otherWay,
             taskfile::bytes().constData());
}

void tst_TaskStorage::makesTheFolder()
{
    const QString path = testhome::path() + u"/some/new/folder/todo.json"_s;
    QVERIFY(TaskStorage(path).save(std::make_unique<TaskRepository>().get()));
    QCOMPARE(QFileInfo(path).size(), 2);
}

void tst_TaskStorage::leavesNoOtherFiles()
{
    TaskRepository repository;
    repository.addTask(makeTask(u"a"_s));
    QVERIFY(m_storage.save(&repository));
    QVERIFY(m_storage.save(&repository));
    QCOMPARE(QDir(testhome::appDataPath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{u"todo.json"_s});
}

void tst_TaskStorage::folderInPlaceOfTheFileIsReported()
{
    QVERIFY(QDir().mkpath(taskfile::path()));
    const TaskRepository repository;
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(u"Cannot write task storage: \"%1\""_s.arg(taskfile::path())));
    QVERIFY(!m_storage.save(&repository));
    QVERIFY(QFileInfo(taskfile::path()).isDir());
}

void tst_TaskStorage::keepsTheOrderWithinOneSecondByIdAfterALoad()
{
    const QDateTime second(QDate(2026, 3, 1), QTime(9, 30, 15));
    TaskRepository repository;
    Task first = makeTask(u"b"_s);
    first.createdTime = second.addMSecs(100);
    Task last = makeTask(u"a"_s);
    last.createdTime = second.addMSecs(900);
    repository.addTask(first);
    repository.addTask(last);
    QCOMPARE(repository.children(QString()).constFirst().id, u"b"_s);

    QVERIFY(m_storage.save(&repository));
    QVERIFY(m_storage.load(&repository));
    QCOMPARE(repository.children(QString()).constFirst().id, u"a"_s);
}

void tst_TaskStorage::refusesDataThatIsNoArray_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const QString noError = u"\"no error occurred\""_s;
    QTest::newRow("object") << "{}"_ba << noError;
    QTest::newRow("object around an array") << json("{'tasks':[]}") << noError;
    QTest::newRow("empty file") << ""_ba << u"\"illegal value\""_s;
    QTest::newRow("zero bytes") << QByteArray(64, '\0') << u"\"%1\""_s.arg(jsonreason::noValue());
    QTest::newRow("invalid UTF-8") << json("[{'id':'a\xff'}]") << u"\"invalid UTF8 string\""_s;
    QTest::newRow("cut-off UTF-8") << json("[{'id':'a\xe5\x86'}]") << u"\"invalid UTF8 string\""_s;
    QTest::newRow("UTF-16") << QByteArray("[\0]\0", 4) << u"\"illegal number\""_s;
    QTest::newRow("two arrays") << "[][]"_ba << u"\"garbage at the end of the document\""_s;
    QTest::newRow("100,000 arrays deep")
        << QByteArray(100000, '[') + QByteArray(100000, ']') << u"\"too deeply nested document\""_s;
    QTest::newRow("100,000 objects deep")
        << '[' + json("{'id':").repeated(100000) + '1' + QByteArray(100000, '}') + ']'
        << u"\"too deeply nested document\""_s;
}

void tst_TaskStorage::refusesDataThatIsNoArray()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, reason);
    taskfile::write(content);
    TaskRepository repository;
    QTest::ignoreMessage(QtWarningMsg, qPrintable(u"Invalid task storage format: "_s + reason));
    QVERIFY(!m_storage.load(&repository));
    QVERIFY(repository.allTasks().isEmpty());
    QCOMPARE(taskfile::bytes(), content);
}

void tst_TaskStorage::refusesATruncatedFile()
{
    const QByteArray content = '[' + bankTask + ',' + fullTask + ']';
    const QRegularExpression anyReason(u"^Invalid task storage format: "_s);
    for (qsizetype size = 0; size < content.size(); ++size) {
        taskfile::write(content.left(size));
        TaskRepository repository;
        QTest::ignoreMessage(QtWarningMsg, anyReason);
        QVERIFY2(!m_storage.load(&repository), qPrintable(QString::number(size)));
        QVERIFY2(repository.allTasks().isEmpty(), qPrintable(QString::number(size)));
    }
}

void tst_TaskStorage::dropsElementsWithoutAnId()
{
    taskfile::write(json("[1, {'title':'x'}]"));
    TaskRepository repository;
    QVERIFY(m_storage.load(&repository));
    QVERIFY(repository.allTasks().isEmpty());
}

void tst_TaskStorage::readsAHundredMegabytes_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<char>("filling");
    QTest::addColumn<QByteArray>("tail");
    QTest::addColumn<int>("taskCount"); // -1 if load() fails
    QTest::newRow("one long note") << json("[{'id':'a','note':'") << 'x' << json("'}]") << 1;
    QTest::newRow("blanks around the tasks") << "["_ba << ' ' << bankTask + ']' << 1;
    QTest::newRow("no JSON at all") << ""_ba << 'x' << ""_ba << -1;
    QTest::newRow("cut off within a note") << json("[{'id':'a','note':'") << 'x' << ""_ba << -1;
}

void tst_TaskStorage::readsAHundredMegabytes()
{
    QFETCH(const QByteArray, head);
    QFETCH(const char, filling);
    QFETCH(const QByteArray, tail);
    QFETCH(const int, taskCount);
    taskfile::write(head + QByteArray(hundredMegabytes, filling) + tail);
    TaskRepository repository;
    if (taskCount < 0) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Invalid task storage format: "_s));
    }
    QCOMPARE(m_storage.load(&repository), taskCount >= 0);
    QCOMPARE(repository.allTasks().size(), qMax(taskCount, 0));
}

VASKEL_TEST(tst_TaskStorage, QCoreApplication)
#include "tst_TaskStorage.moc"
