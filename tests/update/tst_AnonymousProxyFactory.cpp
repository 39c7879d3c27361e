// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/AnonymousProxyFactory.h"

#include "support/TestProgram.h"
#include "update/HttpServer.h"
#include "update/Updater.h"

#include <QNetworkProxy>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

/// Sets the application's proxy in place of the desktop's.
class tst_AnonymousProxyFactory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QNetworkProxy::setApplicationProxy(QNetworkProxy::DefaultProxy); }

    void givesEachProxyAName_data();
    void givesEachProxyAName();
    void updaterTellsAProxyNoOtherName();
};

void tst_AnonymousProxyFactory::givesEachProxyAName_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("expected");
    QTest::newRow("http") << int(QNetworkProxy::HttpProxy) << QString() << u"anonymous"_s;
    QTest::newRow("SOCKS") << int(QNetworkProxy::Socks5Proxy) << QString() << u"anonymous"_s;
    QTest::newRow("the user's choice") << int(QNetworkProxy::HttpProxy) << u"me"_s << u"me"_s;
    QTest::newRow("none") << int(QNetworkProxy::NoProxy) << QString() << QString();
}

void tst_AnonymousProxyFactory::givesEachProxyAName()
{
    QFETCH(int, type);
    QFETCH(QString, user);
    const QNetworkProxy proxy(QNetworkProxy::ProxyType(type), u"127.0.0.1"_s, 1, user);
    QNetworkProxy::setApplicationProxy(proxy);
    const QNetworkProxyQuery query(QUrl(u"https://host.example/"_s));
    const QList<QNetworkProxy> proxies = AnonymousProxyFactory().queryProxy(query);
    QCOMPARE(proxies.size(), 1);
    QTEST(proxies.first().user(), "expected");
    QCOMPARE(proxies.first().type(), proxy.type());
}

void tst_AnonymousProxyFactory::updaterTellsAProxyNoOtherName()
{
    HttpServer server;
    server.answer(u"host.example:443"_s, // of the request CONNECT
                  httpAnswer("407 Proxy Authentication Required",
                             "Proxy-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n", {}));
    const quint16 port = quint16(QUrl(server.address()).port());
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, port});
    Updater updater;
    const QSignalSpy failed(&updater, &Updater::downloadError);
    updater.downloadAndInstall(u"https://host.example/new"_s);
    QTRY_COMPARE(failed.size(), 1);
    QVERIFY(server.requests.size() >= 2);
    const QByteArray last = server.requests.constLast().toLower();
    QVERIFY2(last.contains("proxy-authorization: basic "
                           + QByteArray("anonymous:").toBase64().toLower()),
             last.constData());
}

VASKEL_TEST(tst_AnonymousProxyFactory, QCoreApplication)
#include "tst_AnonymousProxyFactory.moc"
