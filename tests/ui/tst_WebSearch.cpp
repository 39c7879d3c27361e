// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WebSearch.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_WebSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksTheNamedEngine_data();
    void asksTheNamedEngine();
    void encodesTheText_data();
    void encodesTheText();
};

void tst_WebSearch::asksTheNamedEngine_data()
{
    QTest::addColumn<QString>("engine");
    QTest::addColumn<QString>("address");

    const QString bing = u"https://www.bing.com/search?q=qt"_s;
    QTest::newRow("Google") << u"Google"_s << u"https://www.google.com/search?q=qt"_s;
    QTest::newRow("Baidu") << u"Baidu"_s << u"https://www.baidu.com/s?wd=qt"_s;
    QTest::newRow("DuckDuckGo") << u"DuckDuckGo"_s << u"https://duckduckgo.com/?q=qt"_s;
    QTest::newRow("Bing") << u"Bing"_s << bing;
    QTest::newRow("unknown name is Bing") << u"Yandex"_s << bing;
    QTest::newRow("no name is Bing") << QString() << bing;
    QTest::newRow("other case is Bing") << u"google"_s << bing;
    QTest::newRow("blank behind the name is Bing") << u"Google "_s << bing;
}

void tst_WebSearch::asksTheNamedEngine()
{
    QFETCH(QString, engine);
    QTEST(webSearchUrl(engine, u"qt"_s), "address");
}

void tst_WebSearch::encodesTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("query");

    QTest::newRow("unreserved characters stay") << u"aZ09-._~"_s << u"aZ09-._~"_s;
    QTest::newRow("blank") << u"a b"_s << u"a%20b"_s;
    QTest::newRow("reserved characters") << u"1+2=3&q#?/"_s << u"1%2B2%3D3%26q%23%3F%2F"_s;
    QTest::newRow("percent sign") << u"100%41"_s << u"100%2541"_s;
    QTest::newRow("Chinese text in UTF-8") << u"天气"_s << u"%E5%A4%A9%E6%B0%94"_s;
    QTest::newRow("place marker") << u"%1"_s << u"%251"_s;
}

void tst_WebSearch::encodesTheText()
{
    QFETCH(QString, text);
    QFETCH(QString, query);
    QCOMPARE(webSearchUrl(u"Google"_s, text), u"https://www.google.com/search?q="_s + query);
}

VASKEL_TEST(tst_WebSearch, QCoreApplication)
#include "tst_WebSearch.moc"
