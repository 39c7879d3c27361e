// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ResultRecord.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_ResultRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesARecordOfItsArguments();
    void makesAnInertRecord();
    void makesARecordOfAProgram();
    void makesAnActionWithAndWithoutACommand();
    void namesTheTypesOfActions();
    void addsAnActionOrReplacesIt();
    void readsTheKeyThatIsPresent_data();
    void readsTheKeyThatIsPresent();
    void actionOfTypeNoneIsNoAction_data();
    void actionOfTypeNoneIsNoAction();
    void pathAndIconAreEmptyWhenMissing();
    void readsTheFieldsOfAnAction();
    void addsACompletion();
};

void tst_ResultRecord::makesARecordOfItsArguments()
{
    QCOMPARE(makeRecord(u"t"_s, u"s"_s),
             (QVariantMap{{u"title"_s, u"t"_s}, {u"subtitle"_s, u"s"_s}}));
    QCOMPARE(
        makeRecord(u"t"_s, QString(), QString()),
        (QVariantMap{{u"title"_s, u"t"_s}, {u"subtitle"_s, QString()}, {u"icon"_s, QString()}}));
    const QVariantMap action{{u"type"_s, u"x"_s}};
    QCOMPARE(makeRecord(u"t"_s, u"s"_s, u"/i.png"_s, action), (QVariantMap{{u"title"_s, u"t"_s},
                                                                           {u"subtitle"_s, u"s"_s},
                                                                           {u"icon"_s, u"/i.png"_s},
                                                                           {u"action"_s, action}}));
}

void tst_ResultRecord::makesAnInertRecord()
{
    const QVariantMap record = makeInertRecord(u"t"_s, u"s"_s, u"cd"_s);
    QCOMPARE(record, (QVariantMap{{u"title"_s, u"t"_s},
                                  {u"subtitle"_s, u"s"_s},
                                  {u"icon"_s, QString()},
                                  {u"action"_s,
                                   QVariantMap{{u"type"_s, u"none"_s}, {u"plugin"_s, u"cd"_s}}}}));
    QCOMPARE(recordAction(record), QVariantMap());

    QVariantMap withIcon = record;
    withIcon.insert(u"icon"_s, u"/i.png"_s);
    QCOMPARE(makeInertRecord(u"t"_s, u"s"_s, u"/i.png"_s, u"cd"_s), withIcon);
}

void tst_ResultRecord::makesARecordOfAProgram()
{
    QVariantMap expected{{u"name"_s, u"n"_s}, {u"path"_s, u"/p"_s}, {u"icon"_s, u"/i.png"_s}};
    QCOMPARE(makeProgramRecord(u"n"_s, u"/p"_s, u"/i.png"_s), expected);
    expected.insert(u"desc"_s, u"d"_s);
    QCOMPARE(makeProgramRecord(u"n"_s, u"/p"_s, u"/i.png"_s, u"d"_s), expected);
}

void tst_ResultRecord::makesAnActionWithAndWithoutACommand()
{
    QVariantMap expected{{u"type"_s, u"x"_s}, {u"data"_s, u"d"_s}};
    QCOMPARE(makeAction(u"x"_s, u"d"_s), expected);
    expected.insert(u"plugin"_s, u"calc"_s);
    QCOMPARE(makeAction(u"x"_s, u"d"_s, u"calc"_s), expected);
}

void tst_ResultRecord::namesTheTypesOfActions()
{
    QCOMPARE(actiontype::addTask, u"addTask"_s);
    QCOMPARE(actiontype::copy, u"copy"_s);
    QCOMPARE(actiontype::launch, u"launch"_s);
    QCOMPARE(actiontype::navigate, u"navigate"_s);
    QCOMPARE(actiontype::openFile, u"openFile"_s);
    QCOMPARE(actiontype::openFolder, u"openFolder"_s);
    QCOMPARE(actiontype::openUrl, u"openUrl"_s);
}

void tst_ResultRecord::addsAnActionOrReplacesIt()
{
    QVariantMap record{{u"title"_s, u"t"_s}};
    const QVariantMap first{{u"type"_s, u"x"_s}};
    setRecordAction(record, first);
    QCOMPARE(record, (QVariantMap{{u"title"_s, u"t"_s}, {u"action"_s, first}}));
    const QVariantMap second{{u"type"_s, u"y"_s}};
    setRecordAction(record, second);
    QCOMPARE(record, (QVariantMap{{u"title"_s, u"t"_s}, {u"action"_s, second}}));
}

void tst_ResultRecord::readsTheKeyThatIsPresent_data()
{
    QTest::addColumn<QVariantMap>("record");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("subtitle");

    QTest::newRow("none") << QVariantMap() << QString() << QString();
    QTest::newRow("title and subtitle")
        << QVariantMap{{u"title"_s, u"t"_s}, {u"subtitle"_s, u"s"_s}} << u"t"_s << u"s"_s;
    QTest::newRow("name and desc")
        << QVariantMap{{u"name"_s, u"n"_s}, {u"desc"_s, u"d"_s}} << u"n"_s << u"d"_s;
    QTest::newRow("title and subtitle win, also when they are empty")
        << QVariantMap{{u"title"_s, QString()},
                       {u"name"_s, u"n"_s},
                       {u"subtitle"_s, QString()},
                       {u"desc"_s, u"d"_s}}
        << QString() << QString();
}

void tst_ResultRecord::readsTheKeyThatIsPresent()
{
    QFETCH(QVariantMap, record);
    QTEST(recordTitle(record), "title");
    QTEST(recordSubtitle(record), "subtitle");
}

void tst_ResultRecord::actionOfTypeNoneIsNoAction_data()
{
    QTest::addColumn<QVariant>("action");
    QTest::addColumn<bool>("counts");

    QTest::newRow("missing") << QVariant() << false;
    QTest::newRow("empty map") << QVariant(QVariantMap()) << false;
    QTest::newRow("no map") << QVariant(u"copy"_s) << false;
    QTest::newRow("none") << QVariant(QVariantMap{{u"type"_s, u"none"_s}}) << false;
    QTest::newRow("none of a plugin")
        << QVariant(QVariantMap{{u"type"_s, u"none"_s}, {u"plugin"_s, u"cd"_s}}) << false;
    QTest::newRow("NONE in capitals counts")
        << QVariant(QVariantMap{{u"type"_s, u"NONE"_s}}) << true;
    QTest::newRow("no type but a plugin counts")
        << QVariant(QVariantMap{{u"plugin"_s, u"calc"_s}}) << true;
    QTest::newRow("any other type counts") << QVariant(QVariantMap{{u"type"_s, u"x"_s}}) << true;
}

void tst_ResultRecord::actionOfTypeNoneIsNoAction()
{
    QFETCH(QVariant, action);
    QFETCH(bool, counts);
    QVariantMap record;
    if (action.isValid()) {
        record.insert(u"action"_s, action);
    }
    QCOMPARE(recordAction(record), counts ? action.toMap() : QVariantMap());
}

void tst_ResultRecord::pathAndIconAreEmptyWhenMissing()
{
    QCOMPARE(recordPath({}), QString());
    QCOMPARE(recordIcon({}), QString());
    const QVariantMap record{{u"path"_s, u"/p"_s}, {u"icon"_s, u"/i.png"_s}};
    QCOMPARE(recordPath(record), u"/p"_s);
    QCOMPARE(recordIcon(record), u"/i.png"_s);
}

void tst_ResultRecord::readsTheFieldsOfAnAction()
{
    QCOMPARE(actionType({}), QString());
    QCOMPARE(actionData({}), QString());
    QCOMPARE(actionCommand({}), QString());
    const QVariantMap action{
        {u"type"_s, u"openFile"_s}, {u"data"_s, u"/p"_s}, {u"plugin"_s, u"file"_s}};
    QCOMPARE(actionType(action), u"openFile"_s);
    QCOMPARE(actionData(action), u"/p"_s);
    QCOMPARE(actionCommand(action), u"file"_s);
}

void tst_ResultRecord::addsACompletion()
{
    QVariantMap record = makeRecord(u"t"_s, u"s"_s);
    QCOMPARE(recordCompletion(record), QString());
    setRecordCompletion(record, u"a "_s);
    QCOMPARE(
        record,
        (QVariantMap{{u"title"_s, u"t"_s}, {u"subtitle"_s, u"s"_s}, {u"completion"_s, u"a "_s}}));
    QCOMPARE(recordCompletion(record), u"a "_s);
}

VASKEL_TEST(tst_ResultRecord, QCoreApplication)
#include "tst_ResultRecord.moc"
