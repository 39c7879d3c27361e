// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/ScriptAnswer.h"

#include "app/Translation.h"
#include "core/ResultRecord.h"
#include "support/JsonReason.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonParseError>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

// On Windows absolute paths begin with a drive.
QString absolute(const QString &path)
{
    return QDir::rootPath() + path;
}

CommandFile commandFile(CommandFile::Output output,
                        CommandFile::Action action = CommandFile::Action::Copy)
{
    CommandFile file;
    file.folder = absolute(u"commands/mine"_s);
    file.command = u"mine"_s;
    file.icon = absolute(u"commands/mine/icon.png"_s);
    file.output = output;
    file.action = action;
    return file;
}

ScriptAnswer items(const QByteArray &output, CommandFile::Action action = CommandFile::Action::Copy)
{
    return ScriptAnswer::parse(output, commandFile(CommandFile::Output::Items, action));
}

ScriptAnswer lines(const QByteArray &output)
{
    return ScriptAnswer::parse(output, commandFile(CommandFile::Output::Lines));
}

QVariantMap record(const ScriptAnswer &answer, qsizetype row)
{
    return answer.records.value(row).toMap();
}

QStringList titles(const ScriptAnswer &answer)
{
    QStringList result;
    for (const QVariant &row : answer.records) {
        result.append(recordTitle(row.toMap()));
    }
    return result;
}

} // namespace

class tst_ScriptAnswer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAnItem();
    void readsAnItemThatHasATitleAlone();
    void makesAnInvalidItemInert();
    void makesAnItemWithoutArgumentInertUnlessItRuns();
    void ignoresUnknownKeys();
    void readsNumbersAndSeveralArguments();
    void findsIconsInTheFolder();
    void opensFilesAndAddresses_data();
    void opensFilesAndAddresses();
    void reportsAWrongAnswer_data();
    void reportsAWrongAnswer();
    void readsAtMost200Items();
    void readsLines();
    void readsAtMost200Lines();
    void readsTheOptionsOfALine();
    void ignoresAByteOrderMark();
    void translatesTheErrorsOfJson();
    void hasNoRecordsForAnEmptyAnswer();
};

void tst_ScriptAnswer::readsAnItem()
{
    const ScriptAnswer answer = items(
        R"({"items": [{"title": "One", "subtitle": "First", "arg": "1", "icon": {"path": "a.png"},
            "valid": true, "autocomplete": "one "}]})");
    QCOMPARE(answer.error, QString());
    QCOMPARE(answer.records.size(), 1);
    const QVariantMap row = record(answer, 0);
    QCOMPARE(recordTitle(row), u"One"_s);
    QCOMPARE(recordSubtitle(row), u"First"_s);
    QCOMPARE(recordIcon(row), absolute(u"commands/mine/a.png"_s));
    QCOMPARE(recordAction(row), makeAction(actiontype::copy, u"1"_s, u"mine"_s));
    QCOMPARE(recordCompletion(row), u"one "_s);
}

void tst_ScriptAnswer::readsAnItemThatHasATitleAlone()
{
    const QVariantMap row = record(items(R"({"items": [{"title": "One"}]})"), 0);
    QCOMPARE(recordTitle(row), u"One"_s);
    QCOMPARE(recordSubtitle(row), QString());
    QCOMPARE(recordIcon(row), absolute(u"commands/mine/icon.png"_s));
    QVERIFY(!row.contains(u"completion"_s));
}

void tst_ScriptAnswer::makesAnInvalidItemInert()
{
    const QVariantMap row = record(
        items(R"({"items": [{"title": "a", "arg": "1", "valid": false, "autocomplete": "b"}]})"),
        0);
    QVERIFY(recordAction(row).isEmpty());
    QCOMPARE(recordCompletion(row), u"b"_s);
}

void tst_ScriptAnswer::makesAnItemWithoutArgumentInertUnlessItRuns()
{
    const QByteArray output = R"({"items": [{"title": "a"}]})";
    QVERIFY(recordAction(record(items(output), 0)).isEmpty());
    QVERIFY(recordAction(record(items(output, CommandFile::Action::Open), 0)).isEmpty());
    QCOMPARE(recordAction(record(items(output, CommandFile::Action::Run), 0)),
             makeAction(ScriptAnswer::runType, QString(), u"mine"_s));
}

void tst_ScriptAnswer::ignoresUnknownKeys()
{
    const ScriptAnswer answer = items(
        R"({"rerun": 1, "variables": {}, "items": [{"title": "a", "uid": "x", "mods": {"alt": {}},
            "text": {"copy": "c"}, "match": "m"}]})");
    QCOMPARE(answer.error, QString());
    QCOMPARE(titles(answer), QStringList(u"a"_s));
}

void tst_ScriptAnswer::readsNumbersAndSeveralArguments()
{
    const ScriptAnswer answer =
        items(R"({"items": [{"title": 5, "arg": 1.5}, {"title": "b", "arg": ["x", "y"]}]})");
    QCOMPARE(titles(answer), QStringList({u"5"_s, u"b"_s}));
    QCOMPARE(actionData(recordAction(record(answer, 0))), u"1.5"_s);
    QCOMPARE(actionData(recordAction(record(answer, 1))), u"x\ny"_s);
}

void tst_ScriptAnswer::findsIconsInTheFolder()
{
    QByteArray output = R"({"items": [
        {"title": "a", "icon": {"path": "./icons/a.png"}},
        {"title": "b", "icon": {"path": "ROOTusr/share/b.png"}},
        {"title": "c", "icon": {"path": "ROOTetc", "type": "fileicon"}},
        {"title": "d", "icon": "d.png"}]})";
    const ScriptAnswer answer = items(output.replace("ROOT", absolute({}).toUtf8()));
    QCOMPARE(recordIcon(record(answer, 0)), absolute(u"commands/mine/icons/a.png"_s));
    QCOMPARE(recordIcon(record(answer, 1)), absolute(u"usr/share/b.png"_s));
    QCOMPARE(recordIcon(record(answer, 2)), absolute(u"commands/mine/icon.png"_s));
    QCOMPARE(recordIcon(record(answer, 3)), absolute(u"commands/mine/d.png"_s));
}

void tst_ScriptAnswer::opensFilesAndAddresses_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QVariantMap>("action");

    const auto file = [](const QString &path) {
        return makeAction(actiontype::openFile, path, u"mine"_s);
    };
    const auto url = [](const QString &address) {
        return makeAction(actiontype::openUrl, address, u"mine"_s);
    };
    QTest::newRow("absolute path") << absolute(u"etc/hosts"_s) << file(absolute(u"etc/hosts"_s));
    QTest::newRow("relative path") << u"a b.txt"_s << file(absolute(u"commands/mine/a b.txt"_s));
    QTest::newRow("address of a file") << u"file:///a%20b"_s << file(u"/a b"_s);
    QTest::newRow("web") << u"https://example.org/?q=a%20b"_s
                         << url(u"https://example.org/?q=a%20b"_s);
    QTest::newRow("mail") << u"mailto:a@example.org"_s << url(u"mailto:a@example.org"_s);
}

void tst_ScriptAnswer::opensFilesAndAddresses()
{
    QFETCH(const QString, argument);
    const ScriptAnswer answer =
        items(R"({"items": [{"title": "a", "arg": ")" + argument.toUtf8() + R"("}]})",
              CommandFile::Action::Open);
    QTEST(recordAction(record(answer, 0)), "action");
}

void tst_ScriptAnswer::reportsAWrongAnswer_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QString>("error");

    const QString noList = u"The answer is no JSON object with a list \"items\"."_s;
    QTest::newRow("no UTF-8") << QByteArray("{\"items\": [{\"title\": \"\xff\"}]}")
                              << u"The answer is not valid UTF-8."_s;
    QTest::newRow("no JSON") << QByteArray("Error: no network")
                             << u"The answer is not valid JSON: %1 at byte 1."_s.arg(
                                    jsonreason::noValue());
    QTest::newRow("nothing") << QByteArray()
                             << u"The answer is not valid JSON: illegal value at byte 0."_s;
    QTest::newRow("list") << QByteArray("[]") << noList;
    QTest::newRow("no items") << QByteArray("{}") << noList;
    QTest::newRow("items of another type") << QByteArray(R"({"items": {}})") << noList;
    QTest::newRow("no title") << QByteArray(R"({"items": [{"title": "a"}, {"arg": "b"}]})")
                              << u"Item 2 of the answer has no title."_s;
    QTest::newRow("no object") << QByteArray(R"({"items": ["a"]})")
                               << u"Item 1 of the answer has no title."_s;
}

void tst_ScriptAnswer::reportsAWrongAnswer()
{
    QFETCH(const QByteArray, output);
    const ScriptAnswer answer = items(output);
    QTEST(answer.error, "error");
    QCOMPARE(answer.records.size(), 0);
}

void tst_ScriptAnswer::readsAtMost200Items()
{
    QByteArray output = R"({"items": [{"title": "0"})";
    for (int i = 1; i <= 200; ++i) {
        output += R"(, {"title": ")" + QByteArray::number(i) + R"("})";
    }
    const QStringList rows = titles(items(output + "]}"));
    QCOMPARE(rows.size(), 200);
    QCOMPARE(rows.last(), u"199"_s);
}

void tst_ScriptAnswer::readsLines()
{
    const ScriptAnswer answer = lines("one\r\n\n  \nzwei ü\nlast");
    QCOMPARE(answer.error, QString());
    QCOMPARE(titles(answer), QStringList({u"one"_s, u"zwei ü"_s, u"last"_s}));
    const QVariantMap row = record(answer, 1);
    QCOMPARE(recordSubtitle(row), QString());
    QCOMPARE(recordIcon(row), absolute(u"commands/mine/icon.png"_s));
    QCOMPARE(recordAction(row), makeAction(actiontype::copy, u"zwei ü"_s, u"mine"_s));
}

void tst_ScriptAnswer::readsAtMost200Lines()
{
    QCOMPARE(titles(lines(QByteArray("a\n").repeated(201))).size(), 200);
}

void tst_ScriptAnswer::readsTheOptionsOfALine()
{
    const ScriptAnswer answer = lines(QByteArrayLiteral("\0prompt\x1fPick\n"
                                                        "one\0icon\x1fimages/one.png\n"
                                                        "two\0icon\x1f"
                                                        "firefox\x1fmeta\x1fx\n"
                                                        "three\0nonselectable\x1ftrue\n"
                                                        "four\0display\x1fThe fourth\n"
                                                        "five\0icon\n"));
    QCOMPARE(titles(answer),
             QStringList({u"one"_s, u"two"_s, u"three"_s, u"The fourth"_s, u"five"_s}));
    QCOMPARE(actionData(recordAction(record(answer, 3))), u"four"_s);
    QCOMPARE(recordIcon(record(answer, 0)), absolute(u"commands/mine/images/one.png"_s));
    QCOMPARE(recordIcon(record(answer, 1)), absolute(u"commands/mine/icon.png"_s));
    QCOMPARE(actionData(recordAction(record(answer, 1))), u"two"_s);
    QVERIFY(recordAction(record(answer, 2)).isEmpty());
}

void tst_ScriptAnswer::ignoresAByteOrderMark()
{
    QCOMPARE(titles(lines("\xef\xbb\xbfone\r\ntwo\r\n")), QStringList({u"one"_s, u"two"_s}));
    const ScriptAnswer answer = items("\xef\xbb\xbf{\"items\":\r\n [{\"title\": \"a\"}]}\r\n");
    QCOMPARE(answer.error, QString());
    QCOMPARE(titles(answer), QStringList(u"a"_s));
}

void tst_ScriptAnswer::translatesTheErrorsOfJson()
{
    QTranslator translator;
    QVERIFY(loadTranslation(translator, {u"zh-CN"_s}, u"/nonexistent"_s));
    QCoreApplication::installTranslator(&translator);
    QCOMPARE(items("{").error, u"返回结果不是有效的 JSON：对象未结束（第 1 字节）。"_s);
    for (int i = QJsonParseError::NoError; i <= QJsonParseError::GarbageAtEnd; ++i) {
        QJsonParseError error;
        error.error = static_cast<QJsonParseError::ParseError>(i);
        QVERIFY2(error.errorString().at(0).script() == QChar::Script_Han,
                 qUtf8Printable(error.errorString()));
    }
}

void tst_ScriptAnswer::hasNoRecordsForAnEmptyAnswer()
{
    QCOMPARE(items(R"({"items": []})").records.size(), 0);
    QCOMPARE(items(R"({"items": []})").error, QString());
    QCOMPARE(lines("").records.size(), 0);
    QCOMPARE(lines("").error, QString());
}

VASKEL_TEST(tst_ScriptAnswer, QCoreApplication)
#include "tst_ScriptAnswer.moc"
