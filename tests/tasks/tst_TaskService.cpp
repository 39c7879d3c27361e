// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskService.h"

#include "support/TestProgram.h"
#include "tasks/TaskFile.h"
#include "tasks/TaskRepository.h"

#include <QDir>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

// Older than any test run, so that a changed time shows.
const QDateTime longAgo(QDate(2020, 1, 1), QTime(12, 0));

/// Sets fields that the service cannot set.
void backdate(TaskService &service, const QString &id, bool completed)
{
    Task task = service.repository()->task(id);
    task.completed = completed;
    task.createdTime = longAgo;
    task.updatedTime = longAgo;
    service.repository()->updateTask(task);
}

bool isCompleted(const TaskService &service, const QString &id)
{
    return service.repository()->task(id).completed;
}

bool wasTouched(const TaskService &service, const QString &id)
{
    return service.repository()->task(id).updatedTime != longAgo;
}

/// A chain of tasks down to the level, beyond the limit if need be; returns their ids.
QStringList makeChain(TaskService &service, int levels)
{
    QStringList ids;
    for (int level = 1; level <= levels; ++level) {
        ids.append(service.createTask(u"level %1"_s.arg(level), ids.value(level - 2)));
    }
    return ids;
}

/// Elements of a task file, from texts of the form "id<parentId".
QByteArray fileOf(const QStringList &tasks)
{
    QJsonArray array;
    for (const QString &text : tasks) {
        array.append(QJsonObject{{u"id"_s, text.section(u'<', 0, 0)},
                                 {u"parentId"_s, text.section(u'<', 1)},
                                 {u"title"_s, text.section(u'<', 0, 0)}});
    }
    return QJsonDocument(array).toJson();
}

} // namespace

class tst_TaskService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void readsTheFileAtTheStart();
    void damagedFileIsReplacedByTheFirstChange();
    void writesNothingByItself();
    void invokableByName();

    void createsATrimmedTask();
    void refusesToCreate_data();
    void refusesToCreate();
    void createsBelowAParentOfAnyLevel();
    void leavesACompletedParentWhenAChildIsAdded();

    void createsASubtaskDownToLevelFive();
    void refusesASubtask_data();
    void refusesASubtask();

    void deletesTheSubtree();
    void deletingLeavesTheParentAsItIs_data();
    void deletingLeavesTheParentAsItIs();
    void unknownIdChangesNothingButWrites_data();
    void unknownIdChangesNothingButWrites();

    void completesAndReopensTheSubtree_data();
    void completesAndReopensTheSubtree();
    void completingTheLastOpenChildCompletesTheChain();
    void reopeningAChildReopensTheAncestorsAlone();
    void stopsAtTheFirstConsistentAncestor();
    void reopensAnInconsistentParentWithItsChild();
    void updatesParentsBeforeChildrenAndThenAncestors();
    void savesOnceAfterAllItsUpdates();

    void changesTheTitle();
    void keepsTheTitle_data();
    void keepsTheTitle();
    void changesTheNoteAsItIs_data();
    void changesTheNoteAsItIs();
    void unknownIdGetsNoTitleAndNoNote();
    void persistWritesTheFile();

    void survivesACycle_data();
    void survivesACycle();
    void stopsOnAnInconsistentCycle();
    void survivesALongChain();
};

void tst_TaskService::init()
{
    testhome::reset();
}

void tst_TaskService::readsTheFileAtTheStart()
{
    taskfile::write(fileOf({u"a"_s, u"b<a"_s}));
    const TaskService service;
    QCOMPARE(service.repository()->allTasks().size(), 2);
    QCOMPARE(service.repository()->children(u"a"_s).size(), 1);
}

void tst_TaskService::damagedFileIsReplacedByTheFirstChange()
{
    taskfile::write("[{\"id\":");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Invalid task storage format: "_s));
    TaskService service;
    QVERIFY(service.repository()->allTasks().isEmpty());
    QCOMPARE(taskfile::bytes(), "[{\"id\":"_ba);

    service.createTask(u"first"_s);
    QCOMPARE(taskfile::tasksByTitle().keys(), QStringList{u"first"_s});
    QCOMPARE(QDir(testhome::appDataPath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{u"todo.json"_s});
}

void tst_TaskService::writesNothingByItself()
{
    {
        const TaskService service;
    }
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TaskService::invokableByName()
{
    TaskService service;
    QString id;
    QVERIFY(QMetaObject::invokeMethod(&service, "createTask", Q_RETURN_ARG(QString, id),
                                      Q_ARG(QString, u"top"_s)));
    QString childId;
    QVERIFY(QMetaObject::invokeMethod(&service, "createSubTask", Q_RETURN_ARG(QString, childId),
                                      Q_ARG(QString, id), Q_ARG(QString, u"child"_s)));
    QCOMPARE(service.repository()->task(childId).parentId, id);

    for (const char *signature :
         {"createTask(QString,QString)", "deleteTask(QString)", "setCompleted(QString,bool)",
          "updateTitle(QString,QString)", "updateNote(QString,QString)", "persist()"}) {
        QVERIFY2(TaskService::staticMetaObject.indexOfMethod(signature) >= 0, signature);
    }
}

void tst_TaskService::createsATrimmedTask()
{
    TaskService service;
    const QDateTime before = QDateTime::currentDateTime();
    const QString id = service.createTask(u" \t Call  the bank\n"_s);
    const Task task = service.repository()->task(id);

    QCOMPARE(id.size(), 36);
    QVERIFY(!QUuid::fromString(id).isNull());
    QCOMPARE(id, id.toLower());
    QCOMPARE(task.title, u"Call  the bank"_s);
    QVERIFY(task.parentId.isEmpty());
    QVERIFY(task.note.isEmpty());
    QVERIFY(!task.completed);
    QCOMPARE(task.priority, 0);
    QVERIFY(!task.dueTime.isValid());
    QVERIFY(task.createdTime >= before && task.createdTime <= QDateTime::currentDateTime());
    QCOMPARE(task.createdTime.timeSpec(), Qt::LocalTime);
    QCOMPARE(task.updatedTime, task.createdTime);
    QCOMPARE(taskfile::tasksByTitle().value(u"Call  the bank"_s), task.toJson());
}

void tst_TaskService::refusesToCreate_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("parentId");
    QTest::newRow("empty title") << QString() << QString();
    QTest::newRow("title of blanks") << u" \t\n\u3000"_s << QString();
    QTest::newRow("unknown parent") << u"title"_s << u"unknown"_s;
}

void tst_TaskService::refusesToCreate()
{
    QFETCH(const QString, title);
    QFETCH(const QString, parentId);
    TaskService service;
    QCOMPARE(service.createTask(title, parentId), QString());
    QVERIFY(service.repository()->allTasks().isEmpty());
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TaskService::createsBelowAParentOfAnyLevel()
{
    TaskService service;
    const QStringList chain = makeChain(service, 6);
    QCOMPARE(service.repository()->depth(chain.constLast()), 6);
    QCOMPARE(taskfile::tasksByTitle().size(), 6);
}

void tst_TaskService::leavesACompletedParentWhenAChildIsAdded()
{
    TaskService service;
    const QString parent = service.createTask(u"parent"_s);
    backdate(service, parent, true);
    service.createTask(u"child"_s, parent);
    service.createSubTask(parent, u"other child"_s);

    QVERIFY(isCompleted(service, parent));
    QVERIFY(!wasTouched(service, parent));
}

void tst_TaskService::createsASubtaskDownToLevelFive()
{
    TaskService service;
    QString id = service.createTask(u"top"_s);
    for (int level = 2; level <= 5; ++level) {
        id = service.createSubTask(id, u" level %1 "_s.arg(level));
        QCOMPARE(service.repository()->depth(id), level);
        QVERIFY(taskfile::tasksByTitle().contains(u"level %1"_s.arg(level)));
    }
    QCOMPARE(service.createSubTask(id, u"level 6"_s), QString());
    QCOMPARE(service.repository()->allTasks().size(), 5);
}

void tst_TaskService::refusesASubtask_data()
{
    QTest::addColumn<int>("parentLevel"); // 0 for none, -1 for an unknown parent
    QTest::addColumn<QString>("title");
    QTest::newRow("empty parent") << 0 << u"title"_s;
    QTest::newRow("unknown parent") << -1 << u"title"_s;
    QTest::newRow("blank title") << 1 << u"  "_s;
    QTest::newRow("below level five") << 5 << u"title"_s;
    QTest::newRow("below level six") << 6 << u"title"_s;
}

void tst_TaskService::refusesASubtask()
{
    QFETCH(const int, parentLevel);
    QFETCH(const QString, title);
    TaskService service;
    const QStringList chain = makeChain(service, 6);
    const QString unknown = parentLevel < 0 ? u"unknown"_s : QString();
    const QByteArray stored = taskfile::bytes();

    QCOMPARE(service.createSubTask(chain.value(parentLevel - 1, unknown), title), QString());
    QCOMPARE(service.repository()->allTasks().size(), 6);
    QCOMPARE(taskfile::bytes(), stored);
}

void tst_TaskService::deletesTheSubtree()
{
    TaskService service;
    const QStringList chain = makeChain(service, 4);
    service.createTask(u"other"_s);
    service.deleteTask(chain[1]);

    QStringList titles = taskfile::tasksByTitle().keys();
    titles.sort();
    QCOMPARE(titles, QStringList({u"level 1"_s, u"other"_s}));
    QCOMPARE(service.repository()->allTasks().size(), 2);
}

void tst_TaskService::deletingLeavesTheParentAsItIs_data()
{
    QTest::addColumn<bool>("parentCompleted");
    QTest::addColumn<bool>("hasCompletedSibling");
    QTest::newRow("last open child of an open parent") << false << true;
    QTest::newRow("only child of an open parent") << false << false;
    QTest::newRow("only child of a completed parent") << true << false;
}

void tst_TaskService::deletingLeavesTheParentAsItIs()
{
    QFETCH(const bool, parentCompleted);
    QFETCH(const bool, hasCompletedSibling);
    TaskService service;
    const QString parent = service.createTask(u"parent"_s);
    const QString child = service.createTask(u"child"_s, parent);
    if (hasCompletedSibling) {
        backdate(service, service.createTask(u"sibling"_s, parent), true);
    }
    backdate(service, parent, parentCompleted);
    service.deleteTask(child);

    QCOMPARE(isCompleted(service, parent), parentCompleted);
    QVERIFY(!wasTouched(service, parent));

    // Without children the user can toggle it.
    if (!hasCompletedSibling) {
        service.setCompleted(parent, !parentCompleted);
        QCOMPARE(isCompleted(service, parent), !parentCompleted);
    }
}

void tst_TaskService::unknownIdChangesNothingButWrites_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("unknown id") << u"unknown"_s;
    QTest::newRow("empty id") << QString();
    QTest::newRow("id of a missing parent") << u"gone"_s;
}

void tst_TaskService::unknownIdChangesNothingButWrites()
{
    QFETCH(const QString, id);
    taskfile::write(fileOf({u"a"_s, u"b<a"_s, u"orphan<gone"_s}));
    TaskService service;
    const QJsonArray tasks = service.repository()->toJson();

    QVERIFY(QFile::remove(taskfile::path()));
    service.setCompleted(id, true);
    QCOMPARE(QJsonDocument::fromJson(taskfile::bytes()).array(), tasks);

    QVERIFY(QFile::remove(taskfile::path()));
    service.deleteTask(id);
    QCOMPARE(QJsonDocument::fromJson(taskfile::bytes()).array(), tasks);
}

void tst_TaskService::completesAndReopensTheSubtree_data()
{
    QTest::addColumn<bool>("completed");
    QTest::newRow("completing") << true;
    QTest::newRow("reopening") << false;
}

void tst_TaskService::completesAndReopensTheSubtree()
{
    QFETCH(const bool, completed);
    TaskService service;
    const QStringList chain = makeChain(service, 4);
    const QString sibling = service.createTask(u"sibling"_s, chain[1]);
    const QString stranger = service.createTask(u"stranger"_s);
    for (const QString &id : chain) {
        backdate(service, id, !completed);
    }
    backdate(service, sibling, completed); // already in that state
    backdate(service, stranger, !completed);

    service.setCompleted(chain[0], completed);

    for (const QString &id : chain + QStringList(sibling)) {
        QCOMPARE(isCompleted(service, id), completed);
        QVERIFY(wasTouched(service, id));
    }
    QCOMPARE(isCompleted(service, stranger), !completed);
    QVERIFY(!wasTouched(service, stranger));
    QCOMPARE(taskfile::tasksByTitle().value(u"level 4"_s).value("completed"_L1).toBool(),
             completed);
}

void tst_TaskService::completingTheLastOpenChildCompletesTheChain()
{
    TaskService service;
    const QStringList chain = makeChain(service, 4);
    for (int level = 1; level < 4; ++level) {
        backdate(service, service.createTask(u"sibling"_s, chain[level - 1]), true);
    }
    service.setCompleted(chain[3], true);

    const QList<Task> tasks = service.repository()->allTasks();
    for (const Task &task : tasks) {
        QVERIFY2(task.completed, qPrintable(task.title));
    }
}

void tst_TaskService::reopeningAChildReopensTheAncestorsAlone()
{
    TaskService service;
    const QStringList chain = makeChain(service, 4);
    QStringList siblings;
    for (int level = 1; level < 4; ++level) {
        siblings.append(service.createTask(u"sibling"_s, chain[level - 1]));
    }
    for (const QString &id : chain + siblings) {
        backdate(service, id, true);
    }
    service.setCompleted(chain[3], false);

    for (const QString &id : chain) {
        QVERIFY(!isCompleted(service, id));
        QVERIFY(wasTouched(service, id));
    }
    for (const QString &id : siblings) {
        QVERIFY(isCompleted(service, id));
        QVERIFY(!wasTouched(service, id));
    }
}

void tst_TaskService::stopsAtTheFirstConsistentAncestor()
{
    TaskService service;
    const QStringList chain = makeChain(service, 3);
    service.createTask(u"open sibling"_s, chain[1]);
    // The top is inconsistent with its only child, but the update stops below it.
    backdate(service, chain[0], true);
    backdate(service, chain[1], false);
    service.setCompleted(chain[2], true);

    QVERIFY(!isCompleted(service, chain[1]));
    QVERIFY(!wasTouched(service, chain[1]));
    QVERIFY(isCompleted(service, chain[0]));
}

void tst_TaskService::reopensAnInconsistentParentWithItsChild()
{
    TaskService service;
    const QString parent = service.createTask(u"parent"_s);
    service.setCompleted(parent, true);
    const QString child = service.createSubTask(parent, u"child"_s);
    QVERIFY(isCompleted(service, parent));

    service.setCompleted(child, true);
    QVERIFY(isCompleted(service, parent));
    service.setCompleted(child, false);
    QVERIFY(!isCompleted(service, parent));
}

void tst_TaskService::updatesParentsBeforeChildrenAndThenAncestors()
{
    TaskService service;
    const QStringList chain = makeChain(service, 3);
    const QString sibling = service.createTask(u"sibling"_s, chain[1]);
    Task younger = service.repository()->task(sibling);
    younger.createdTime = younger.createdTime.addSecs(1);
    service.repository()->updateTask(younger);
    QSignalSpy updated(service.repository(), &TaskRepository::taskUpdated);
    service.setCompleted(chain[1], true);
    QCOMPARE(updated, QList<QVariantList>({{chain[1]}, {chain[2]}, {sibling}, {chain[0]}}));
}

void tst_TaskService::savesOnceAfterAllItsUpdates()
{
    TaskService service;
    const QStringList chain = makeChain(service, 5);
    const QByteArray stored = taskfile::bytes();
    int updates = 0;
    int earlySaves = 0;
    connect(service.repository(), &TaskRepository::taskUpdated, this, [&] {
        ++updates;
        earlySaves += taskfile::bytes() == stored ? 0 : 1;
    });
    service.setCompleted(chain[2], true);
    QCOMPARE(updates, 5); // the task, two descendants and two ancestors
    QCOMPARE(earlySaves, 0);
    QVERIFY(taskfile::tasksByTitle().value(u"level 1"_s).value("completed"_L1).toBool());
}

void tst_TaskService::changesTheTitle()
{
    TaskService service;
    const QString id = service.createTask(u"old"_s);
    backdate(service, id, false);
    service.updateTitle(id, u"  new\t"_s);

    QCOMPARE(service.repository()->task(id).title, u"new"_s);
    QCOMPARE(service.repository()->task(id).createdTime, longAgo);
    QVERIFY(wasTouched(service, id));
    QCOMPARE(taskfile::tasksByTitle().keys(), QStringList{u"new"_s});
}

void tst_TaskService::keepsTheTitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << u" \t "_s;
    QTest::newRow("the same") << u"old"_s;
    QTest::newRow("the same but for blanks around it") << u"  old "_s;
}

void tst_TaskService::keepsTheTitle()
{
    QFETCH(const QString, title);
    TaskService service;
    const QString id = service.createTask(u"old"_s);
    backdate(service, id, false);
    QVERIFY(QFile::remove(taskfile::path()));
    service.updateTitle(id, title);

    QCOMPARE(service.repository()->task(id).title, u"old"_s);
    QVERIFY(!wasTouched(service, id));
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TaskService::changesTheNoteAsItIs_data()
{
    QTest::addColumn<QString>("note");
    QTest::newRow("with blanks around it") << u"  new\n"_s;
    QTest::newRow("the same") << u"old"_s;
    QTest::newRow("empty") << QString();
}

void tst_TaskService::changesTheNoteAsItIs()
{
    QFETCH(const QString, note);
    TaskService service;
    const QString id = service.createTask(u"task"_s);
    service.updateNote(id, u"old"_s);
    backdate(service, id, false);
    QVERIFY(QFile::remove(taskfile::path()));
    service.updateNote(id, note);

    QCOMPARE(service.repository()->task(id).note, note);
    QVERIFY(wasTouched(service, id));
    QCOMPARE(taskfile::tasksByTitle().value(u"task"_s).value("note"_L1).toString(), note);
}

void tst_TaskService::unknownIdGetsNoTitleAndNoNote()
{
    TaskService service;
    service.updateTitle(u"unknown"_s, u"title"_s);
    service.updateNote(u"unknown"_s, u"note"_s);
    service.updateNote(QString(), u"note"_s);
    QVERIFY(service.repository()->allTasks().isEmpty());
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TaskService::persistWritesTheFile()
{
    TaskService service;
    service.persist();
    QCOMPARE(taskfile::bytes(), "[]"_ba);
}

void tst_TaskService::survivesACycle_data()
{
    QTest::addColumn<QStringList>("circle");
    QTest::newRow("its own parent") << QStringList{u"a<a"_s};
    QTest::newRow("two in a circle") << QStringList{u"a<b"_s, u"b<a"_s};
    QTest::newRow("six in a circle")
        << QStringList{u"a<f"_s, u"b<a"_s, u"c<b"_s, u"d<c"_s, u"e<d"_s, u"f<e"_s};
    QTest::newRow("tails on a circle")
        << QStringList{u"a<b"_s, u"b<a"_s, u"a1<a"_s, u"b1<b"_s, u"b2<b1"_s};
}

void tst_TaskService::survivesACycle()
{
    QFETCH(const QStringList, circle);
    const QStringList good{u"root"_s, u"child<root"_s};
    taskfile::write(fileOf(circle + good));
    TaskService service;

    for (const QString &text : circle) {
        const QString id = text.section(u'<', 0, 0);
        service.setCompleted(id, true);
        QVERIFY(isCompleted(service, id));
        service.setCompleted(id, false);
        QVERIFY(!isCompleted(service, id));
        service.updateTitle(id, id + u" changed"_s);
        service.updateNote(id, id);
        const QString sub = service.createSubTask(id, u"sub"_s);
        QCOMPARE(sub.isEmpty(), service.repository()->depth(id) >= 5);
        service.deleteTask(sub);
    }
    service.setCompleted(u"child"_s, true);
    QVERIFY(isCompleted(service, u"root"_s));
    QCOMPARE(taskfile::tasksByTitle().size(), circle.size() + good.size());

    service.deleteTask(u"root"_s);
    service.deleteTask(u"a"_s);
    QVERIFY(!service.repository()->contains(u"a"_s));
    QVERIFY(!service.repository()->contains(u"child"_s));
}

void tst_TaskService::stopsOnAnInconsistentCycle()
{
    taskfile::write(fileOf({u"a<b"_s, u"b<c"_s, u"c<a"_s, u"open<c"_s, u"start<a"_s}));
    TaskService service;
    backdate(service, u"c"_s, true);
    QSignalSpy updated(service.repository(), &TaskRepository::taskUpdated);
    service.setCompleted(u"start"_s, true);

    // All become completed up to the task that was completed despite its open child.
    QCOMPARE(updated,
             QList<QVariantList>({{u"start"_s}, {u"a"_s}, {u"b"_s}, {u"c"_s}, {u"a"_s}, {u"b"_s}}));
    for (const QString &id : {u"a"_s, u"b"_s, u"c"_s}) {
        QVERIFY(!isCompleted(service, id));
    }
}

void tst_TaskService::survivesALongChain()
{
    QStringList chain;
    for (int i = 0; i < 20000; ++i) {
        chain.append(u"%1<%2"_s.arg(i).arg(i == 0 ? QString() : QString::number(i - 1)));
    }
    taskfile::write(fileOf(chain));
    TaskService service;
    service.setCompleted(u"0"_s, true);
    QVERIFY(isCompleted(service, u"19999"_s));
    QCOMPARE(service.createSubTask(u"19999"_s, u"sub"_s), QString());
    service.deleteTask(u"0"_s);
    QCOMPARE(taskfile::bytes(), "[]"_ba);
}

VASKEL_TEST(tst_TaskService, QCoreApplication)
#include "tst_TaskService.moc"
