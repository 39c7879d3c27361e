// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultRecord.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_ResultRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void actionOfTypeNoneIsNoAction_data();
    void actionOfTypeNoneIsNoAction();
    void pathAndIconAreEmptyWhenMissing();
};

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

VASKEL_TEST(tst_ResultRecord, QCoreApplication)
#include "tst_ResultRecord.moc"
