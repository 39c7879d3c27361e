// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InstanceRequest.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Verb = InstanceRequest::Verb;

class tst_InstanceRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void survivesTheMessage_data();
    void survivesTheMessage();
    void knowsNoOtherMessage_data();
    void knowsNoOtherMessage();
    void takesTheLongestMessageAndNoLongerOne();
    void startsTheProgramToShowIt();
};

void tst_InstanceRequest::survivesTheMessage_data()
{
    QTest::addColumn<InstanceRequest>("request");
    QTest::addColumn<QByteArray>("message");

    QTest::newRow("toggle") << InstanceRequest{Verb::Toggle, {}} << "toggle"_ba;
    QTest::newRow("show") << InstanceRequest{Verb::Show, {}} << "show"_ba;
    QTest::newRow("hide") << InstanceRequest{Verb::Hide, {}} << "hide"_ba;
    QTest::newRow("quit") << InstanceRequest{Verb::Quit, {}} << "quit"_ba;
    QTest::newRow("query") << InstanceRequest{Verb::Query, u"calc 1+2"_s} << "query calc 1+2"_ba;
    QTest::newRow("query without letters") << InstanceRequest{Verb::Query, u""_s} << "query "_ba;
    QTest::newRow("query with a blank in front")
        << InstanceRequest{Verb::Query, u" cd"_s} << "query  cd"_ba;
    QTest::newRow("query in Chinese")
        << InstanceRequest{Verb::Query, u"计算器\nä"_s} << "query 计算器\nä"_ba;
}

void tst_InstanceRequest::survivesTheMessage()
{
    QFETCH(const InstanceRequest, request);
    QFETCH(const QByteArray, message);
    QCOMPARE(request.toMessage(), message);
    const std::optional<InstanceRequest> read = InstanceRequest::fromMessage(message);
    QVERIFY(read);
    QVERIFY(*read == request);
}

void tst_InstanceRequest::knowsNoOtherMessage_data()
{
    QTest::addColumn<QByteArray>("message");
    for (const char *message : {"", " ", "restart", "execute rm", "Show", "--show", "show ",
                                "show now", "show\n", "quit x", "query", "queryx", " query x",
                                "launch /bin/true", "query \xff\xfe", "\xffshow"}) {
        QTest::newRow(message) << QByteArray(message);
    }
    QTest::newRow("a null character") << QByteArray("show\0", 5);
}

void tst_InstanceRequest::knowsNoOtherMessage()
{
    QFETCH(const QByteArray, message);
    QVERIFY(!InstanceRequest::fromMessage(message));
}

void tst_InstanceRequest::takesTheLongestMessageAndNoLongerOne()
{
    const QByteArray longest = "query " + QByteArray(4090, 'x');
    QVERIFY(InstanceRequest::fromMessage(longest));
    QVERIFY(!InstanceRequest::fromMessage(longest + 'x'));
}

void tst_InstanceRequest::startsTheProgramToShowIt()
{
    QVERIFY((InstanceRequest{Verb::Toggle, {}}.startsProgram()));
    QVERIFY((InstanceRequest{Verb::Show, {}}.startsProgram()));
    QVERIFY((InstanceRequest{Verb::Query, u"x"_s}.startsProgram()));
    QVERIFY(!(InstanceRequest{Verb::Hide, {}}.startsProgram()));
    QVERIFY(!(InstanceRequest{Verb::Quit, {}}.startsProgram()));
}

VASKEL_TEST(tst_InstanceRequest, QCoreApplication)
#include "tst_InstanceRequest.moc"
