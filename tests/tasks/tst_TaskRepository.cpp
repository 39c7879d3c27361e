// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskRepository.h"

#include "support/TestProgram.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QDateTime firstMoment(QDate(2026, 3, 1), QTime(9, 30));

Task makeTask(const QString &id, const QString &parentId = QString(), int milliseconds = 0)
{
    Task task;
    task.id = id;
    task.parentId = parentId;
    task.title = u"title of "_s + id;
    task.createdTime = firstMoment.addMSecs(milliseconds);
    task.updatedTime = task.createdTime;
    return task;
}

/// Adds tasks given as "id" or "id<parentId", each a second younger than the previous one.
void fill(TaskRepository &repository, const QStringList &tasks)
{
    int milliseconds = 0;
    for (const QString &text : tasks) {
        repository.addTask(
            makeTask(text.section(u'<', 0, 0), text.section(u'<', 1), milliseconds += 1000));
    }
}

QStringList idsOf(const QList<Task> &tasks)
{
    QStringList ids;
    for (const Task &task : tasks) {
        ids.append(task.id);
    }
    return ids;
}

QStringList sortedIds(const TaskRepository &repository)
{
    QStringList ids = idsOf(repository.allTasks());
    ids.sort();
    return ids;
}

} // namespace

class tst_TaskRepository : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void declaresItsSignalsInOrder();
    void startsEmpty();
    void addsAndReplacesById();
    void givesAnEmptyTaskForAnUnknownId();
    void updatesOnlyWhatItHolds();
    void removesTheSubtreeWithOneSignal();
    void removesNothingForAnUnknownId();
    void sortsSiblings_data();
    void sortsSiblings();
    void findsChildrenByTheExactParent();
    void groupsLikeChildren();
    void listsDescendantsParentsFirst();
    void measuresDepth_data();
    void measuresDepth();
    void keepsATaskWithoutItsParentButDoesNotListIt();
    void replacesTheTableWithoutASignal();
    void dropsElementsWithoutAnId();
    void laterElementOfOneIdWins();
    void elementWithAnIdAloneIsATopLevelTask();
    void survivesACycle_data();
    void survivesACycle();
    void survivesALongChain();
};

void tst_TaskRepository::declaresItsSignalsInOrder()
{
    const QMetaObject &meta = TaskRepository::staticMetaObject;
    QByteArrayList signatures;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        signatures.append(meta.method(index).methodSignature());
    }
    QCOMPARE(signatures, QByteArrayList({"taskAdded(QString)", "taskRemoved(QString)",
                                         "taskUpdated(QString)", "taskMoved(QString)"}));
}

void tst_TaskRepository::startsEmpty()
{
    const TaskRepository repository;
    QVERIFY(repository.allTasks().isEmpty());
    QVERIFY(repository.children(QString()).isEmpty());
    QCOMPARE(repository.toJson(), QJsonArray());
}

void tst_TaskRepository::addsAndReplacesById()
{
    TaskRepository repository;
    QSignalSpy added(&repository, &TaskRepository::taskAdded);
    repository.addTask(makeTask(u"a"_s));
    Task other = makeTask(u"a"_s);
    other.title = u"other"_s;
    repository.addTask(other);

    QVERIFY(repository.contains(u"a"_s));
    QCOMPARE(repository.allTasks().size(), 1);
    QCOMPARE(repository.task(u"a"_s).title, u"other"_s);
    QCOMPARE(added, QList<QVariantList>({{u"a"_s}, {u"a"_s}}));
}

void tst_TaskRepository::givesAnEmptyTaskForAnUnknownId()
{
    TaskRepository repository;
    fill(repository, {u"a"_s});
    QVERIFY(!repository.contains(u"A"_s));
    QVERIFY(repository.task(u"A"_s).id.isEmpty());
    QVERIFY(repository.task(QString()).id.isEmpty());
}

void tst_TaskRepository::updatesOnlyWhatItHolds()
{
    TaskRepository repository;
    fill(repository, {u"a"_s});
    QSignalSpy updated(&repository, &TaskRepository::taskUpdated);
    QSignalSpy added(&repository, &TaskRepository::taskAdded);

    Task changed = makeTask(u"a"_s);
    changed.note = u"note"_s;
    repository.updateTask(changed);
    repository.updateTask(makeTask(u"b"_s));

    QCOMPARE(repository.task(u"a"_s).note, u"note"_s);
    QCOMPARE(sortedIds(repository), QStringList{u"a"_s});
    QCOMPARE(updated, QList<QVariantList>({{u"a"_s}}));
    QVERIFY(added.isEmpty());
}

void tst_TaskRepository::removesTheSubtreeWithOneSignal()
{
    TaskRepository repository;
    fill(repository, {u"root"_s, u"child<root"_s, u"other child<root"_s, u"grandchild<child"_s,
                      u"great grandchild<grandchild"_s, u"kept"_s, u"kept child<kept"_s});
    QSignalSpy removed(&repository, &TaskRepository::taskRemoved);
    repository.removeTask(u"root"_s);

    QCOMPARE(sortedIds(repository), QStringList({u"kept"_s, u"kept child"_s}));
    QCOMPARE(removed, QList<QVariantList>({{u"root"_s}}));
}

void tst_TaskRepository::removesNothingForAnUnknownId()
{
    TaskRepository repository;
    fill(repository, {u"top"_s, u"orphan<gone"_s});
    QSignalSpy removed(&repository, &TaskRepository::taskRemoved);
    repository.removeTask(u"gone"_s);
    repository.removeTask(QString());

    QCOMPARE(sortedIds(repository), QStringList({u"orphan"_s, u"top"_s}));
    QVERIFY(removed.isEmpty());
}

void tst_TaskRepository::sortsSiblings_data()
{
    QTest::addColumn<QList<int>>("milliseconds"); // creation times of the tasks "a", "b" and so on
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("older first") << QList<int>{30, 20, 10} << QStringList{u"c"_s, u"b"_s, u"a"_s};
    QTest::newRow("a millisecond counts") << QList<int>{1, 0} << QStringList{u"b"_s, u"a"_s};
    QTest::newRow("same moment by id")
        << QList<int>{5, 5, 5, 0} << QStringList{u"d"_s, u"a"_s, u"b"_s, u"c"_s};
}

void tst_TaskRepository::sortsSiblings()
{
    QFETCH(const QList<int>, milliseconds);
    QFETCH(const QStringList, expected);
    TaskRepository repository;
    for (int i = 0; i < milliseconds.size(); ++i) {
        repository.addTask(makeTask(QChar(u'a' + i), QString(), milliseconds[i]));
    }
    QCOMPARE(idsOf(repository.children(QString())), expected);
}

void tst_TaskRepository::findsChildrenByTheExactParent()
{
    TaskRepository repository;
    // Equal times compare the ids by code unit: upper case before lower case.
    repository.addTask(makeTask(u"b"_s, u"p"_s));
    repository.addTask(makeTask(u"B"_s, u"p"_s));
    repository.addTask(makeTask(u"c"_s, u"P"_s));
    repository.addTask(makeTask(u"p"_s));

    QCOMPARE(idsOf(repository.children(u"p"_s)), QStringList({u"B"_s, u"b"_s}));
    QCOMPARE(idsOf(repository.children(u"P"_s)), QStringList{u"c"_s});
    QCOMPARE(idsOf(repository.children(QString())), QStringList{u"p"_s});
}

void tst_TaskRepository::groupsLikeChildren()
{
    TaskRepository repository;
    fill(repository, {u"z"_s, u"y"_s, u"z2<z"_s, u"z1<z"_s, u"y1<y"_s, u"orphan<gone"_s});
    repository.addTask(makeTask(u"z0"_s, u"z"_s, 4000)); // created at the same time as z1

    const TaskGroups groups = repository.childrenByParent();
    QCOMPARE(groups.size(), 4);
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
        QStringList ids;
        for (const Task *task : group.value()) {
            ids.append(task->id);
        }
        QCOMPARE(ids, idsOf(repository.children(group.key())));
    }
    QCOMPARE(groups.value(u"z"_s).size(), 3);
    QCOMPARE(groups.value(u"z"_s).at(1)->id, u"z0"_s);
}

void tst_TaskRepository::listsDescendantsParentsFirst()
{
    TaskRepository repository;
    fill(repository, {u"root"_s, u"b<root"_s, u"a<root"_s, u"b2<b"_s, u"b1<b"_s, u"a1<a"_s,
                      u"b21<b2"_s, u"stranger"_s});
    QCOMPARE(repository.descendants(u"root"_s),
             QStringList({u"b"_s, u"b2"_s, u"b21"_s, u"b1"_s, u"a"_s, u"a1"_s}));
    QVERIFY(repository.descendants(u"a1"_s).isEmpty());
}

void tst_TaskRepository::measuresDepth_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("depth");
    QTest::newRow("empty id") << QString() << 0;
    QTest::newRow("unknown id") << u"unknown"_s << 1;
    QTest::newRow("top level") << u"top"_s << 1;
    QTest::newRow("child") << u"child"_s << 2;
    QTest::newRow("grandchild") << u"grandchild"_s << 3;
    QTest::newRow("the missing parent is counted") << u"orphan"_s << 2;
}

void tst_TaskRepository::measuresDepth()
{
    QFETCH(const QString, id);
    QFETCH(const int, depth);
    TaskRepository repository;
    fill(repository, {u"top"_s, u"child<top"_s, u"grandchild<child"_s, u"orphan<gone"_s});
    QCOMPARE(repository.depth(id), depth);
}

void tst_TaskRepository::keepsATaskWithoutItsParentButDoesNotListIt()
{
    TaskRepository repository;
    fill(repository, {u"top"_s, u"orphan<gone"_s});
    QCOMPARE(sortedIds(repository), QStringList({u"orphan"_s, u"top"_s}));
    QCOMPARE(idsOf(repository.children(QString())), QStringList{u"top"_s});
    QCOMPARE(repository.toJson().size(), 2);
}

void tst_TaskRepository::replacesTheTableWithoutASignal()
{
    TaskRepository repository;
    fill(repository, {u"old"_s});
    QSignalSpy added(&repository, &TaskRepository::taskAdded);
    QSignalSpy removed(&repository, &TaskRepository::taskRemoved);
    QSignalSpy updated(&repository, &TaskRepository::taskUpdated);
    QSignalSpy moved(&repository, &TaskRepository::taskMoved);

    repository.fromJson({makeTask(u"new"_s).toJson()});

    QCOMPARE(sortedIds(repository), QStringList{u"new"_s});
    QCOMPARE(added.size() + removed.size() + updated.size() + moved.size(), 0);
}

void tst_TaskRepository::dropsElementsWithoutAnId()
{
    TaskRepository repository;
    const QJsonObject noId{{u"title"_s, u"x"_s}};
    repository.fromJson({1, noId, u"a"_s, QJsonArray(), QJsonValue()});
    QVERIFY(repository.allTasks().isEmpty());
}

void tst_TaskRepository::laterElementOfOneIdWins()
{
    TaskRepository repository;
    repository.fromJson({makeTask(u"a"_s, u"first"_s).toJson(), makeTask(u"b"_s).toJson(),
                         makeTask(u"a"_s, u"second"_s).toJson()});
    QCOMPARE(repository.allTasks().size(), 2);
    QCOMPARE(repository.task(u"a"_s).parentId, u"second"_s);
}

void tst_TaskRepository::elementWithAnIdAloneIsATopLevelTask()
{
    TaskRepository repository;
    repository.fromJson({QJsonObject{{u"id"_s, u"a"_s}}});
    const QList<Task> tasks = repository.children(QString());
    QCOMPARE(idsOf(tasks), QStringList{u"a"_s});
    QVERIFY(tasks[0].title.isEmpty());
    QVERIFY(!tasks[0].completed);
    QVERIFY(!tasks[0].createdTime.isValid());
}

void tst_TaskRepository::survivesACycle_data()
{
    QTest::addColumn<QStringList>("circle");
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("depth");
    QTest::addColumn<QStringList>("below");
    QTest::newRow("its own parent") << QStringList{u"a<a"_s} << u"a"_s << 1 << QStringList();
    QTest::newRow("two in a circle")
        << QStringList{u"a<b"_s, u"b<a"_s} << u"a"_s << 2 << QStringList{u"b"_s};
    QTest::newRow("four in a circle") << QStringList{u"a<d"_s, u"b<a"_s, u"c<b"_s, u"d<c"_s}
                                      << u"b"_s << 4 << QStringList{u"c"_s, u"d"_s, u"a"_s};
    QTest::newRow("below a circle") << QStringList{u"a<b"_s, u"b<a"_s, u"tail<a"_s, u"tip<tail"_s}
                                    << u"tip"_s << 4 << QStringList();
    QTest::newRow("a circle with a tail") << QStringList{u"a<b"_s, u"b<a"_s, u"tail<a"_s} << u"b"_s
                                          << 2 << QStringList{u"a"_s, u"tail"_s};
}

void tst_TaskRepository::survivesACycle()
{
    QFETCH(const QStringList, circle);
    QFETCH(const QString, id);
    QFETCH(const int, depth);
    QFETCH(const QStringList, below);
    TaskRepository repository;
    fill(repository, circle + QStringList{u"good root"_s, u"good child<good root"_s});

    QCOMPARE(repository.depth(id), depth);
    QCOMPARE(repository.descendants(id), below);
    QCOMPARE(repository.depth(u"good child"_s), 2);
    QCOMPARE(idsOf(repository.children(QString())), QStringList{u"good root"_s});

    TaskRepository copy;
    copy.fromJson(repository.toJson());
    QCOMPARE(sortedIds(copy), sortedIds(repository));

    repository.removeTask(u"good root"_s);
    QCOMPARE(repository.allTasks().size(), circle.size());
    repository.removeTask(id);
    QCOMPARE(repository.allTasks().size(), circle.size() - 1 - below.size());
}

void tst_TaskRepository::survivesALongChain()
{
    constexpr int length = 100000;
    TaskRepository repository;
    for (int i = 0; i < length; ++i) {
        repository.addTask(
            makeTask(QString::number(i), i == 0 ? QString() : QString::number(i - 1)));
    }
    QCOMPARE(repository.depth(QString::number(length - 1)), length);
    QCOMPARE(repository.descendants(u"0"_s).size(), length - 1);
    repository.removeTask(u"0"_s);
    QVERIFY(repository.allTasks().isEmpty());
}

VASKEL_TEST(tst_TaskRepository, QCoreApplication)
#include "tst_TaskRepository.moc"
