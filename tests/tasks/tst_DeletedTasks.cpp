// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/DeletedTasks.h"

#include "support/TestProgram.h"
#include "tasks/TaskFile.h"
#include "tasks/TaskRepository.h"
#include "tasks/TaskService.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A task with a value in each field; the creation time has milliseconds, which the file drops.
Task makeTask(const QString &id, const QString &parentId, int milliseconds)
{
    const QDateTime created(QDate(2026, 3, 1), QTime(9, 30, 0, milliseconds));
    Task task;
    task.id = id;
    task.parentId = parentId;
    task.title = u"title of "_s + id;
    task.note = u"note of "_s + id;
    task.completed = milliseconds % 2 == 1;
    task.priority = milliseconds;
    task.dueTime = created.addDays(1);
    task.createdTime = created;
    task.updatedTime = created.addSecs(60);
    return task;
}

/// Two top-level tasks: "a" with the children "c" and "b", in this order, "d" below "b", and "e".
void fill(TaskService &service)
{
    TaskRepository *repository = service.repository();
    repository->addTask(makeTask(u"a"_s, QString(), 1));
    repository->addTask(makeTask(u"b"_s, u"a"_s, 4));
    repository->addTask(makeTask(u"c"_s, u"a"_s, 3));
    repository->addTask(makeTask(u"d"_s, u"b"_s, 5));
    repository->addTask(makeTask(u"e"_s, QString(), 2));
}

QStringList childrenOf(const TaskService &service, const QString &id)
{
    QStringList ids;
    const QList<Task> children = service.repository()->children(id);
    for (const Task &child : children) {
        ids.append(child.id);
    }
    return ids;
}

QStringList idsOnDisk()
{
    QStringList ids;
    const QHash<QString, QJsonObject> tasks = taskfile::tasksByTitle();
    for (const QJsonObject &task : tasks) {
        ids.append(task.value("id"_L1).toString());
    }
    ids.sort();
    return ids;
}

void compareWithTheFirst(const TaskService &service, const QString &id, const Task &first)
{
    const Task task = service.repository()->task(id);
    QCOMPARE(task.id, first.id);
    QCOMPARE(task.parentId, first.parentId);
    QCOMPARE(task.title, first.title);
    QCOMPARE(task.note, first.note);
    QCOMPARE(task.completed, first.completed);
    QCOMPARE(task.priority, first.priority);
    QCOMPARE(task.dueTime, first.dueTime);
    QCOMPARE(task.createdTime, first.createdTime);
    QCOMPARE(task.updatedTime, first.updatedTime);
}

} // namespace

class tst_DeletedTasks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }

    void deletesTheSubtree();
    void restoresEveryField();
    void restoresTheOrder();
    void restoresInReverseOrder();
    void leavesTheParentAsItIs();
    void ignoresAnUnknownTask();
    void restoresNothingWithoutADeletion();
    void losesNothingIfSavingFails();
};

void tst_DeletedTasks::deletesTheSubtree()
{
    TaskService service;
    fill(service);
    DeletedTasks deleted(&service);
    QVERIFY(deleted.isEmpty());
    deleted.deleteTask(u"b"_s);
    QVERIFY(!deleted.isEmpty());
    QCOMPARE(idsOnDisk(), QStringList({u"a"_s, u"c"_s, u"e"_s}));
}

void tst_DeletedTasks::restoresEveryField()
{
    TaskService service;
    fill(service);
    QHash<QString, Task> first;
    const QList<Task> tasks = service.repository()->allTasks();
    for (const Task &task : tasks) {
        first.insert(task.id, task);
    }
    DeletedTasks deleted(&service);
    deleted.deleteTask(u"a"_s);
    QCOMPARE(deleted.restoreLast(), u"a"_s);
    QVERIFY(deleted.isEmpty());
    QCOMPARE(service.repository()->allTasks().size(), 5);
    for (auto task = first.cbegin(); task != first.cend(); ++task) {
        compareWithTheFirst(service, task.key(), task.value());
    }
    QCOMPARE(idsOnDisk(), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}));
}

void tst_DeletedTasks::restoresTheOrder()
{
    TaskService service;
    fill(service);
    DeletedTasks deleted(&service);
    for (const QString &id : {u"c"_s, u"a"_s, u"e"_s}) {
        deleted.deleteTask(id);
        deleted.restoreLast();
        QCOMPARE(childrenOf(service, QString()), QStringList({u"a"_s, u"e"_s}));
        QCOMPARE(childrenOf(service, u"a"_s), QStringList({u"c"_s, u"b"_s}));
        QCOMPARE(childrenOf(service, u"b"_s), QStringList{u"d"_s});
    }
}

void tst_DeletedTasks::restoresInReverseOrder()
{
    TaskService service;
    fill(service);
    DeletedTasks deleted(&service);
    for (const QString &id : {u"d"_s, u"e"_s, u"a"_s}) {
        deleted.deleteTask(id);
    }
    QCOMPARE(taskfile::bytes(), "[]"_ba);
    QCOMPARE(deleted.restoreLast(), u"a"_s);
    QCOMPARE(idsOnDisk(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(deleted.restoreLast(), u"e"_s);
    QCOMPARE(deleted.restoreLast(), u"d"_s);
    QCOMPARE(childrenOf(service, u"b"_s), QStringList{u"d"_s});
    QCOMPARE(idsOnDisk(), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}));
}

void tst_DeletedTasks::leavesTheParentAsItIs()
{
    TaskService service;
    const QString parent = service.createTask(u"parent"_s);
    const QString open = service.createTask(u"open"_s, parent);
    service.setCompleted(service.createTask(u"done"_s, parent), true);
    DeletedTasks deleted(&service);
    deleted.deleteTask(open);
    service.setCompleted(parent, true);
    const Task before = service.repository()->task(parent);
    deleted.restoreLast();
    compareWithTheFirst(service, parent, before);
    QVERIFY(!service.repository()->task(open).completed);
}

void tst_DeletedTasks::ignoresAnUnknownTask()
{
    TaskService service;
    fill(service);
    DeletedTasks deleted(&service);
    deleted.deleteTask(u"gone"_s);
    deleted.deleteTask(QString());
    QVERIFY(deleted.isEmpty());
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_DeletedTasks::restoresNothingWithoutADeletion()
{
    TaskService service;
    DeletedTasks deleted(&service);
    QCOMPARE(deleted.restoreLast(), QString());
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_DeletedTasks::losesNothingIfSavingFails()
{
    TaskService service;
    fill(service);
    // A folder in its place makes the file unwritable on every system.
    QVERIFY(QDir().mkpath(taskfile::path()));
    DeletedTasks deleted(&service);
    const QRegularExpression warning(u"^Cannot write task storage:"_s);
    QTest::ignoreMessage(QtWarningMsg, warning);
    deleted.deleteTask(u"a"_s);
    QTest::ignoreMessage(QtWarningMsg, warning);
    QCOMPARE(deleted.restoreLast(), u"a"_s);
    QCOMPARE(service.repository()->allTasks().size(), 5);

    QVERIFY(QDir().rmdir(taskfile::path()));
    service.createTask(u"new"_s);
    QCOMPARE(idsOnDisk().size(), 6);
}

VASKEL_TEST(tst_DeletedTasks, QCoreApplication)
#include "tst_DeletedTasks.moc"
