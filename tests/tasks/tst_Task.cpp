// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/Task.h"

#include "support/TestProgram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

QJsonObject fullObject()
{
    return {
        {u"completed"_s, true},
        {u"createdTime"_s, u"2026-03-01T09:30:15"_s},
        {u"dueTime"_s, u"2026-04-01T00:00:00"_s},
        {u"id"_s, u"6b1f0c2e-8a44-4a57-9c1d-2f6e8d1a7b30"_s},
        {u"note"_s, u"ask for Ms Li"_s},
        {u"parentId"_s, u"d0c7a9e4-1111-4222-8333-444455556666"_s},
        {u"priority"_s, 2},
        {u"title"_s, u"Call the bank"_s},
        {u"updatedTime"_s, u"2026-03-02T10:00:00"_s},
    };
}

QByteArray compact(const Task &task)
{
    return QJsonDocument(task.toJson()).toJson(QJsonDocument::Compact);
}

} // namespace

class tst_Task : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithAnEmptyId();
    void readsEveryKey();
    void writesWhatItReads();
    void writesTheKeysInOrder();
    void missingKeyGivesTheDefault_data();
    void missingKeyGivesTheDefault();
    void valueOfAnotherTypeGivesTheDefault_data();
    void valueOfAnotherTypeGivesTheDefault();
    void priorityMustBeAWhole32BitNumber_data();
    void priorityMustBeAWhole32BitNumber();
    void writesTimesAsQtDoes_data();
    void writesTimesAsQtDoes();
    void textThatIsNoDateBecomesEmpty();
};

void tst_Task::startsWithAnEmptyId()
{
    const Task task;
    QVERIFY(task.id.isEmpty());
    QVERIFY(task.parentId.isEmpty());
    QVERIFY(task.title.isEmpty());
    QVERIFY(task.note.isEmpty());
    QVERIFY(!task.completed);
    QCOMPARE(task.priority, 0);
    QVERIFY(!task.dueTime.isValid());
    QVERIFY(!task.createdTime.isValid());
    QVERIFY(!task.updatedTime.isValid());
}

void tst_Task::readsEveryKey()
{
    const Task task = Task::fromJson(fullObject());
    QCOMPARE(task.id, u"6b1f0c2e-8a44-4a57-9c1d-2f6e8d1a7b30"_s);
    QCOMPARE(task.parentId, u"d0c7a9e4-1111-4222-8333-444455556666"_s);
    QCOMPARE(task.title, u"Call the bank"_s);
    QCOMPARE(task.note, u"ask for Ms Li"_s);
    QCOMPARE(task.completed, true);
    QCOMPARE(task.priority, 2);
    QCOMPARE(task.dueTime, QDateTime(QDate(2026, 4, 1), QTime(0, 0)));
    QCOMPARE(task.createdTime, QDateTime(QDate(2026, 3, 1), QTime(9, 30, 15)));
    QCOMPARE(task.updatedTime, QDateTime(QDate(2026, 3, 2), QTime(10, 0)));
    QCOMPARE(task.createdTime.timeSpec(), Qt::LocalTime);
}

void tst_Task::writesWhatItReads()
{
    QCOMPARE(Task::fromJson(fullObject()).toJson(), fullObject());
}

void tst_Task::writesTheKeysInOrder()
{
    QCOMPARE(compact(Task()), R"({"completed":false,"createdTime":"","dueTime":"","id":"",)"
                              R"("note":"","parentId":"","priority":0,"title":"",)"
                              R"("updatedTime":""})"_ba);
}

void tst_Task::missingKeyGivesTheDefault_data()
{
    QTest::addColumn<QString>("key");
    const QStringList keys = fullObject().keys();
    for (const QString &key : keys) {
        QTest::newRow(qPrintable(key)) << key;
    }
}

void tst_Task::missingKeyGivesTheDefault()
{
    QFETCH(const QString, key);
    QJsonObject input = fullObject();
    input.remove(key);
    QJsonObject expected = fullObject();
    expected.insert(key, Task().toJson().value(key));

    QCOMPARE(Task::fromJson(input).toJson(), expected);
}

void tst_Task::valueOfAnotherTypeGivesTheDefault_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    const QList<QPair<const char *, QJsonValue>> values{
        {"null", QJsonValue()},
        {"boolean", true},
        {"number", 7},
        {"string", u"true"_s},
        {"array", QJsonArray{u"x"_s}},
        {"object", QJsonObject{{u"id"_s, u"x"_s}}},
    };
    const QStringList keys = fullObject().keys();
    for (const QString &key : keys) {
        for (const auto &[name, value] : values) {
            if (value.type() != fullObject().value(key).type()) {
                QTest::addRow("%s as %s", qPrintable(key), name) << key << value;
            }
        }
    }
}

void tst_Task::valueOfAnotherTypeGivesTheDefault()
{
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);
    QJsonObject input = fullObject();
    input.insert(key, value);
    QJsonObject expected = fullObject();
    expected.insert(key, Task().toJson().value(key));

    QCOMPARE(Task::fromJson(input).toJson(), expected);
}

void tst_Task::priorityMustBeAWhole32BitNumber_data()
{
    QTest::addColumn<double>("stored");
    QTest::addColumn<int>("priority");
    QTest::newRow("negative") << -3.0 << -3;
    QTest::newRow("largest") << 2147483647.0 << 2147483647;
    QTest::newRow("fraction gives the default") << 1.5 << 0;
    QTest::newRow("too large gives the default") << 4294967296.0 << 0;
}

void tst_Task::priorityMustBeAWhole32BitNumber()
{
    QFETCH(const double, stored);
    QFETCH(const int, priority);
    QCOMPARE(Task::fromJson({{u"priority"_s, stored}}).priority, priority);
}

void tst_Task::writesTimesAsQtDoes_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QString>("text");
    const QDate date(2026, 3, 1);
    const QTime clock(9, 30, 15, 999);
    QTest::newRow("without milliseconds") << QDateTime(date, clock) << u"2026-03-01T09:30:15"_s;
    QTest::newRow("two digits throughout")
        << QDateTime(QDate(1999, 12, 31), QTime(23, 59, 58)) << u"1999-12-31T23:59:58"_s;
    QTest::newRow("midnight") << QDateTime(date, QTime(0, 0)) << u"2026-03-01T00:00:00"_s;
    QTest::newRow("early year") << QDateTime(QDate(7, 1, 2), clock) << u"0007-01-02T09:30:15"_s;
    QTest::newRow("last year of four digits")
        << QDateTime(QDate(9999, 12, 31), clock) << u"9999-12-31T09:30:15"_s;
    QTest::newRow("year of five digits") << QDateTime(QDate(10000, 1, 1), clock) << QString();
    QTest::newRow("year before the first") << QDateTime(QDate(-44, 3, 15), clock) << QString();
    QTest::newRow("universal time")
        << QDateTime(date, clock, QTimeZone::utc()).toUTC() << u"2026-03-01T09:30:15Z"_s;
    QTest::newRow("offset") << QDateTime(date, clock).toOffsetFromUtc(3600)
                            << u"2026-03-01T10:30:15+01:00"_s;
    QTest::newRow("invalid") << QDateTime() << QString();
    QTest::newRow("date without a time") << QDateTime(date, QTime()) << u"2026-03-01T00:00:00"_s;
}

void tst_Task::writesTimesAsQtDoes()
{
    QFETCH(const QDateTime, time);
    QFETCH(const QString, text);
    Task task;
    task.createdTime = time;
    QCOMPARE(time.toString(Qt::ISODate), text);
    QCOMPARE(task.toJson().value("createdTime"_L1).toString(), text);
}

void tst_Task::textThatIsNoDateBecomesEmpty()
{
    const Task task = Task::fromJson({{u"id"_s, u"a"_s}, {u"dueTime"_s, u"next week"_s}});
    QVERIFY(!task.dueTime.isValid());
    QCOMPARE(task.toJson().value("dueTime"_L1).toString(), QString());
}

VASKEL_TEST(tst_Task, QCoreApplication)
#include "tst_Task.moc"
