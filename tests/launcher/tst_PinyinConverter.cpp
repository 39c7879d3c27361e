// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/PinyinConverter.h"

#include "support/TestProgram.h"

#include <QFile>
#include <QSet>
#include <QStringList>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int levelOneRows = 40;

const QString inventory =
    u"a ai an ang ao ba bai ban bang bao bei ben beng bi bian biao bie bin bing bo bu ca cai can "
    "cang cao ce cen ceng cha chai chan chang chao che chen cheng chi chong chou chu chuai chuan "
    "chuang chui chun chuo ci cong cou cu cuan cui cun cuo da dai dan dang dao de deng di dian "
    "diao die ding diu dong dou du duan dui dun duo e ei en er fa fan fang fei fen feng fou fu ga "
    "gai gan gang gao ge gei gen geng gong gou gu gua guai guan guang gui gun guo ha hai han hang "
    "hao he hei hen heng hong hou hu hua huai huan huang hui hun huo ji jia jian jiang jiao jie "
    "jin jing jiong jiu ju juan jue jun ka kai kan kang kao ke ken keng kong kou ku kua kuai kuan "
    "kuang kui kun kuo la lai lan lang lao le lei leng li lia lian liang liao lie lin ling liu "
    "long lou lu luan lun luo lv lve ma mai man mang mao me mei men meng mi mian miao mie min ming "
    "miu mo mou mu n na nai nan nang nao ne nei nen neng ni nian niang niao nie nin ning niu nong "
    "nou nu nuan nuo nv nve o ou pa pai pan pang pao pei pen peng pi pian piao pie pin ping po pou "
    "pu qi qia qian qiang qiao qie qin qing qiong qiu qu quan que qun ran rang rao re ren reng ri "
    "rong rou ru ruan rui run ruo sa sai san sang sao se sen seng sha shai shan shang shao she "
    "shen sheng shi shou shu shua shuai shuan shuang shui shun shuo si song sou su suan sui sun "
    "suo ta tai tan tang tao te teng ti tian tiao tie ting tong tou tu tuan tui tun tuo wa wai wan "
    "wang wei wen weng wo wu xi xia xian xiang xiao xie xin xing xiong xiu xu xuan xue xun ya yan "
    "yang yao ye yi yin ying yo yong you yu yuan yue yun za zai zan zang zao ze zei zen zeng zha "
    "zhai zhan zhang zhao zhe zhen zheng zhi zhong zhou zhu zhua zhuai zhuan zhuang zhui zhun zhuo "
    "zi zong zou zu zuan zui zun zuo"_s;

QString toPinyin(const QString &text)
{
    return PinyinConverter::instance().toPinyin(text);
}

QString toPinyinInitials(const QString &text)
{
    return PinyinConverter::instance().toPinyinInitials(text);
}

/// The rows of GB 2312 with Chinese characters, in the order of their codes.
QStringList gb2312Rows()
{
    QFile file(u":/gb2312.txt"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the list of characters is not in the test");
    }
    QStringList rows = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    rows.removeIf([](const QString &row) { return row.startsWith(u'#'); });
    return rows;
}

bool hasReading(QChar c)
{
    return !c.isSurrogate() && toPinyin(c) != c.toLower();
}

} // namespace

class tst_PinyinConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fixesTheReading_data();
    void fixesTheReading();
    void knowsExactlyTheCharactersOfGb2312();
    void usesExactlyTheSyllablesOfTheInventory();
    void keepsTheRareSyllablesToTheirCharacters_data();
    void keepsTheRareSyllablesToTheirCharacters();
    void followsTheOrderOfLevelOne();
    void takesTheFirstLetterForTheInitials();
    void readsCharactersAlikeInEveryWord();
    void transliterates_data();
    void transliterates();
    void givesTheSameAnswerTwice();
};

void tst_PinyinConverter::fixesTheReading_data()
{
    QTest::addColumn<char16_t>("code");
    QTest::addColumn<QString>("character");
    QTest::addColumn<QString>("syllable");

    QTest::newRow("the first key") << u'\u4E00' << u"一"_s << u"yi"_s;
    QTest::newRow("the second key") << u'\u4E01' << u"丁"_s << u"ding"_s;
    QTest::newRow("behind a gap") << u'\u4E03' << u"七"_s << u"qi"_s;
    QTest::newRow("the last key") << u'\u9FA0' << u"龠"_s << u"yue"_s;
    QTest::newRow("without a vowel") << u'\u55EF' << u"嗯"_s << u"n"_s;
    QTest::newRow("a vowel alone") << u'\u54E6' << u"哦"_s << u"o"_s;
    QTest::newRow("the only ei") << u'\u8BF6' << u"诶"_s << u"ei"_s;
    QTest::newRow("nü") << u'\u5973' << u"女"_s << u"nv"_s;
    QTest::newRow("lü") << u'\u7EFF' << u"绿"_s << u"lv"_s;
    QTest::newRow("lüe") << u'\u7565' << u"略"_s << u"lve"_s;
    QTest::newRow("nüe") << u'\u8650' << u"虐"_s << u"nve"_s;
    QTest::newRow("not chang") << u'\u957F' << u"长"_s << u"zhang"_s;
    QTest::newRow("not chong") << u'\u91CD' << u"重"_s << u"zhong"_s;
    QTest::newRow("not hang") << u'\u884C' << u"行"_s << u"xing"_s;
    QTest::newRow("not yue") << u'\u4E50' << u"乐"_s << u"le"_s;
    QTest::newRow("not liao") << u'\u4E86' << u"了"_s << u"le"_s;
    QTest::newRow("not huan") << u'\u8FD8' << u"还"_s << u"hai"_s;
    QTest::newRow("not zeng") << u'\u66FE' << u"曾"_s << u"ceng"_s;
    QTest::newRow("not zang") << u'\u85CF' << u"藏"_s << u"cang"_s;
    QTest::newRow("not shuai") << u'\u7387' << u"率"_s << u"lv"_s;
    QTest::newRow("not bo") << u'\u8584' << u"薄"_s << u"bao"_s;
    QTest::newRow("not shi") << u'\u4EC0' << u"什"_s << u"shen"_s;
    QTest::newRow("not xia") << u'\u53A6' << u"厦"_s << u"sha"_s;
    QTest::newRow("not qie") << u'\u8304' << u"茄"_s << u"jia"_s;
    QTest::newRow("not kui") << u'\u5080' << u"傀"_s << u"gui"_s;
    QTest::newRow("not que") << u'\u7094' << u"炔"_s << u"gui"_s;
    QTest::newRow("not si") << u'\u4F3C' << u"似"_s << u"shi"_s;
    QTest::newRow("not shei") << u'\u8C01' << u"谁"_s << u"shui"_s;
    QTest::newRow("not de") << u'\u5730' << u"地"_s << u"di"_s;
    QTest::newRow("not hai") << u'\u54B3' << u"咳"_s << u"ke"_s;
    QTest::newRow("not zhe") << u'\u8457' << u"著"_s << u"zhu"_s;
}

void tst_PinyinConverter::fixesTheReading()
{
    QFETCH(char16_t, code);
    QFETCH(QString, character);
    QFETCH(QString, syllable);

    QCOMPARE(QString(QChar(code)), character);
    QCOMPARE(toPinyin(character), syllable);
    QCOMPARE(toPinyinInitials(character), syllable.left(1));
}

void tst_PinyinConverter::knowsExactlyTheCharactersOfGb2312()
{
    QString known;
    for (int code = 0; code <= 0xFFFF; ++code) {
        if (hasReading(QChar(code))) {
            known += QChar(code);
        }
    }
    QString expected = gb2312Rows().join(QString());
    std::sort(expected.begin(), expected.end());

    QCOMPARE(known.size(), 6763);
    QCOMPARE(known, expected);
}

void tst_PinyinConverter::usesExactlyTheSyllablesOfTheInventory()
{
    QSet<QString> used;
    const QString characters = gb2312Rows().join(QString());
    for (const QChar c : characters) {
        used.insert(toPinyin(c));
    }
    QStringList syllables = used.values();
    syllables.sort();

    QCOMPARE(syllables.size(), 400);
    QCOMPARE(syllables, inventory.split(u' '));
}

void tst_PinyinConverter::keepsTheRareSyllablesToTheirCharacters_data()
{
    QTest::addColumn<QString>("characters");

    QTest::newRow("ei") << u"诶"_s;
    QTest::newRow("n") << u"嗯"_s;
}

void tst_PinyinConverter::keepsTheRareSyllablesToTheirCharacters()
{
    QFETCH(QString, characters);

    QString found;
    const QString all = gb2312Rows().join(QString());
    for (const QChar c : all) {
        if (toPinyin(c) == QLatin1StringView(QTest::currentDataTag())) {
            found += c;
        }
    }
    QCOMPARE(found, characters);
}

void tst_PinyinConverter::followsTheOrderOfLevelOne()
{
    const QString levelOne = gb2312Rows().mid(0, levelOneRows).join(QString());
    QCOMPARE(levelOne.size(), 3755);

    QString previous;
    QString backwards;
    for (const QChar c : levelOne) {
        const QString syllable = toPinyin(c);
        if (syllable < previous) {
            backwards += c;
        }
        previous = syllable;
    }
    QCOMPARE(backwards.size(), 45);
}

void tst_PinyinConverter::takesTheFirstLetterForTheInitials()
{
    const QString characters = gb2312Rows().join(QString());
    for (const QChar c : characters) {
        QCOMPARE(toPinyinInitials(c), toPinyin(c).left(1));
    }
}

void tst_PinyinConverter::readsCharactersAlikeInEveryWord()
{
    QCOMPARE(toPinyin(u"长城"_s), u"zhangcheng"_s);
    QCOMPARE(toPinyin(u"成长"_s), u"chengzhang"_s);
    QCOMPARE(toPinyin(u"长长"_s), u"zhangzhang"_s);
    QCOMPARE(toPinyin(u"银行长短"_s), u"yinxingzhangduan"_s);
}

void tst_PinyinConverter::transliterates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pinyin");
    QTest::addColumn<QString>("initials");

    QTest::newRow("Chinese name") << u"微信"_s << u"weixin"_s << u"wx"_s;
    QTest::newRow("three characters") << u"计算器"_s << u"jisuanqi"_s << u"jsq"_s;
    QTest::newRow("Latin before Chinese") << u"QQ音乐"_s << u"qqyinle"_s << u"qqyl"_s;
    QTest::newRow("polyphonic character") << u"长江"_s << u"zhangjiang"_s << u"zj"_s;
    QTest::newRow("Latin words and a year")
        << u"Adobe Photoshop 2024"_s << u"adobe photoshop 2024"_s << u"adobephotoshop"_s;
    QTest::newRow("digit and dash before Latin") << u"7-Zip"_s << u"7-zip"_s << u"zip"_s;
    QTest::newRow("Chinese before a version") << u"网易云 2.0"_s << u"wangyiyun 2.0"_s << u"wyy"_s;

    QTest::newRow("empty") << QString() << QString() << QString();
    QTest::newRow("digits and punctuation") << u"1.2-3 (4)!"_s << u"1.2-3 (4)!"_s << QString();
    QTest::newRow("Chinese punctuation stays") << u"记：事。"_s << u"ji：shi。"_s << u"js"_s;
    QTest::newRow("beyond the basic plane, alone") << u"\U00020000"_s << QString() << QString();
    QTest::newRow("beyond the basic plane, neighbours join")
        << u"微\U0001F600信"_s << u"weixin"_s << u"wx"_s;
    QTest::newRow("lone high surrogate")
        << QString(u'a' + QString(QChar(0xD83D)) + u'b') << u"ab"_s << u"ab"_s;
    QTest::newRow("lone low surrogate")
        << QString(u'a' + QString(QChar(0xDE00)) + u'b') << u"ab"_s << u"ab"_s;
    QTest::newRow("Latin capitals with accents") << u"ÀÉÖŠ"_s << u"àéöš"_s << u"àéöš"_s;
    QTest::newRow("Greek and Cyrillic capitals") << u"ΩЖ"_s << u"ωж"_s << u"ωж"_s;
    // QString::toLower() returns two characters for it; QChar::toLower() cannot.
    const QString dottedCapital = QChar(u'İ').toLower();
    QTest::newRow("capital I with a dot, as QChar has it")
        << u"İ"_s << dottedCapital << dottedCapital;
    QTest::newRow("skipped code") << u"\u4E02"_s << u"\u4E02"_s << u"\u4E02"_s;
    QTest::newRow("traditional form") << u"長江"_s << u"長jiang"_s << u"長j"_s;
    QTest::newRow("CJK extension A") << u"\u3400"_s << u"\u3400"_s << u"\u3400"_s;
    QTest::newRow("syllables of six letters") << u"窗双装"_s << u"chuangshuangzhuang"_s << u"csz"_s;
    QTest::newRow("syllables of one letter") << u"阿饿哦嗯"_s << u"aeon"_s << u"aeon"_s;
}

void tst_PinyinConverter::transliterates()
{
    QFETCH(QString, text);

    QTEST(toPinyin(text), "pinyin");
    QTEST(toPinyinInitials(text), "initials");
}

void tst_PinyinConverter::givesTheSameAnswerTwice()
{
    const QString text = u"QQ音乐 2"_s;
    QCOMPARE(toPinyin(text), toPinyin(text));
    QCOMPARE(toPinyinInitials(text), toPinyinInitials(text));
    QCOMPARE(&PinyinConverter::instance(), &PinyinConverter::instance());
}

VASKEL_TEST(tst_PinyinConverter, QCoreApplication)
#include "tst_PinyinConverter.moc"
