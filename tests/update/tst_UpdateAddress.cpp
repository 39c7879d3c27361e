// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateAddress.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_UpdateAddress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decidesWithTheKeyAndTheServer_data();
    void decidesWithTheKeyAndTheServer();
    void followsNoRedirectThatMayNotBe_data();
    void followsNoRedirectThatMayNotBe();
};

void tst_UpdateAddress::decidesWithTheKeyAndTheServer_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<bool>("hasKey");
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("mayConnect");
    const QString remote = u"https://host.example"_s;
    const QString local = u"http://127.0.0.1:8080"_s;
    const QString http = u"http://host.example/new"_s;
    const QString https = u"https://host.example/new"_s;
    const QString loopback = u"http://127.0.0.1/new"_s;
    QTest::newRow("https, key") << remote << true << https << true;
    QTest::newRow("https, no key") << remote << false << https << true;
    QTest::newRow("http, key") << remote << true << http << false;
    QTest::newRow("http, no key") << remote << false << http << true;
    QTest::newRow("this machine, from its own server") << local << true << loopback << true;
    // Whoever answers in place of the server must not reach the services of the user's machine.
    QTest::newRow("this machine, from another server") << remote << true << loopback << false;
    QTest::newRow("this machine by name, from another server")
        << remote << true << u"http://localhost:631/"_s << false;
    QTest::newRow("this machine by IPv6, from another server")
        << remote << true << u"http://[::1]/"_s << false;
    QTest::newRow("this machine, no key") << remote << false << loopback << true;
    QTest::newRow("other scheme, no key") << local << false << u"ftp://127.0.0.1/"_s << false;
    QTest::newRow("invalid, no key") << local << false << u"http://[/new"_s << false;
}

void tst_UpdateAddress::decidesWithTheKeyAndTheServer()
{
    QFETCH(QString, server);
    QFETCH(bool, hasKey);
    QFETCH(QString, url);
    QTEST(mayConnectTo(QUrl(url), QUrl(server), hasKey), "mayConnect");
}

void tst_UpdateAddress::followsNoRedirectThatMayNotBe_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<int>("left");
    QTest::addColumn<QString>("error");
    const QString https = u"https://host.example/"_s;
    const QString http = u"http://host.example/"_s;
    QTest::newRow("to https") << http << https << 1 << QString();
    QTest::newRow("from https to http")
        << https << http << 1 << u"Refused to connect to \"http://host.example/\""_s;
    QTest::newRow("too many") << http << https << 0 << u"Too many redirects"_s;
    QTest::newRow("to nowhere") << http << QString() << 1 << u"Refused to connect to \"\""_s;
}

void tst_UpdateAddress::followsNoRedirectThatMayNotBe()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(int, left);
    QTEST(redirectError(QUrl(from), QUrl(to), left), "error");
}

VASKEL_TEST(tst_UpdateAddress, QCoreApplication)
#include "tst_UpdateAddress.moc"
