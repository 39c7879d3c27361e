// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppSearch.h"

#include "launcher/AppEntry.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The name with brackets around the characters that a search hits.
QString marked(const QString &name, const QBitArray &hits)
{
    QString text;
    for (qsizetype index = 0; index < name.size(); ++index) {
        const bool begins = hits.testBit(index) && (index == 0 || !hits.testBit(index - 1));
        const bool ends = !hits.testBit(index) && index > 0 && hits.testBit(index - 1);
        text += begins ? u"["_s : ends ? u"]"_s : QString();
        text += name.at(index);
    }
    return !name.isEmpty() && hits.testBit(name.size() - 1) ? text + u']' : text;
}

} // namespace

class tst_AppSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void marksWhatTheSearchHits_data();
    void marksWhatTheSearchHits();
    void comparesATextWithoutPinyin();
    void searchesShareTheRecords();
};

void tst_AppSearch::marksWhatTheSearchHits_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("hits");
    const auto row = [](const char *tag, const QString &name, const QString &query,
                        const QString &hits) {
        QTest::newRow(tag) << name << query << hits;
    };
    row("letters", u"Firefox"_s, u"fox"_s, u"Fire[fox]"_s);
    row("other case and blanks around", u"Firefox"_s, u" FIRE "_s, u"[Fire]fox"_s);
    row("first place of two", u"Fire and fire"_s, u"fire"_s, u"[Fire] and fire"_s);
    row("blank within", u"Adobe Photoshop"_s, u"be ph"_s, u"Ado[be Ph]otoshop"_s);
    row("initials across a blank", u"Adobe Photoshop"_s, u"beph"_s, u"Ado[be] [Ph]otoshop"_s);
    row("initials across a digit", u"7-Zip 2 Go"_s, u"zipgo"_s, u"7-[Zip] 2 [Go]"_s);
    row("Chinese characters", u"记事本"_s, u"事本"_s, u"记[事本]"_s);
    row("full pinyin", u"记事本"_s, u"jishiben"_s, u"[记事本]"_s);
    row("part of the pinyin", u"记事本"_s, u"shib"_s, u"记[事本]"_s);
    row("within one syllable", u"计算器"_s, u"ua"_s, u"计[算]器"_s);
    row("initials of the pinyin", u"计算器"_s, u"sq"_s, u"计[算器]"_s);
    row("Latin and Chinese", u"QQ音乐"_s, u"qyin"_s, u"Q[Q音]乐"_s);
    row("letters before initials", u"音乐 yy"_s, u"yy"_s, u"音乐 [yy]"_s);
    row("capital of two letters in lower case", u"İstanbul"_s, u"stan"_s, u"İ[stan]bul"_s);
    row("character of two code units", u"\U0001f600 smile"_s, u"\U0001f600"_s,
        u"[\U0001f600] smile"_s);
    row("after one", u"\U0001f600音乐"_s, u"yinle"_s, u"\U0001f600[音乐]"_s);
    row("half of one", u"\xd83d音"_s, u"yin"_s, u"\xd83d[音]"_s);
    row("no match", u"Firefox"_s, u"opera"_s, u"Firefox"_s);
    row("blank query", u"A b"_s, u" "_s, u"A b"_s);
    row("empty name", {}, u"a"_s, {});
}

void tst_AppSearch::marksWhatTheSearchHits()
{
    QFETCH(QString, name);
    QFETCH(QString, query);
    QFETCH(QString, hits);
    QCOMPARE(marked(name, matchInName(name, query)), hits);

    // The search itself must agree. It finds everything by a blank query.
    const bool isFound = !searchApps({AppEntry(name, u"/a"_s, {}, {})}, query).isEmpty();
    QCOMPARE(isFound, hits != name || query.trimmed().isEmpty());
}

void tst_AppSearch::comparesATextWithoutPinyin()
{
    const QString text = u"开始菜单 / Tools"_s;
    QCOMPARE(marked(text, matchInText(text, u"TOOL"_s)), u"开始菜单 / [Tool]s"_s);
    QCOMPARE(marked(text, matchInText(text, u"kaishi"_s)), text);
    QCOMPARE(marked(text, matchInText(text, {})), text);
}

void tst_AppSearch::searchesShareTheRecords()
{
    const QList<AppEntry> apps{AppEntry(u"Firefox"_s, u"/a"_s, u"Web"_s, u"/a.png"_s)};
    const QVariantMap first = searchApps(apps, u"fire"_s).value(0).toMap();
    QVERIFY(first.isSharedWith(searchApps(apps, {}).value(0).toMap()));
    QCOMPARE(first, (QVariantMap{{u"name"_s, u"Firefox"_s},
                                 {u"path"_s, u"/a"_s},
                                 {u"desc"_s, u"Web"_s},
                                 {u"icon"_s, u"/a.png"_s}}));
}

VASKEL_TEST(tst_AppSearch, QCoreApplication)
#include "tst_AppSearch.moc"
