// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/CommandFile.h"

#include "commands/CommandFolder.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString errorOf(const QString &folder)
{
    QString error;
    return CommandFile::load(folder, error) ? u"none"_s : error;
}

} // namespace

class tst_CommandFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void readsEveryKey();
    void hasDefaultsForOptionalKeys();
    void readsTheTextsOfTheUsersLanguage_data();
    void readsTheTextsOfTheUsersLanguage();
    void namesTheKeyAndWhatItExpects_data();
    void namesTheKeyAndWhatItExpects();
    void namesTheFile();
    void refusesAMissingFile();
    void refusesWhatIsNoJson();
    void refusesWhatIsNoObject();
    void refusesALargeFile();
    void refusesWhatIsNoRegularFile();
    void findsAProgramWithASlashInTheFolder();
};

void tst_CommandFile::readsEveryKey()
{
    QJsonObject json = commandfolder::smallestFile(u"mine"_s);
    json["description"_L1] = u"What it does"_s;
    json["icon"_L1] = u"icons/icon.png"_s;
    json["exec"_L1] = QJsonArray{u"python3"_s, u"a.py"_s, u"--text={query}"_s};
    json["output"_L1] = u"lines"_s;
    json["action"_L1] = u"run"_s;
    json["run"_L1] = QJsonArray{u"./start"_s, u"{arg}"_s};
    json["timeoutMs"_L1] = 1500;
    json["delayMs"_L1] = 200;
    const QString folder = commandfolder::write(u"a"_s, json);
    QString error;
    const std::optional<CommandFile> file = CommandFile::load(folder, error);
    QVERIFY2(file, qUtf8Printable(error));
    QCOMPARE(file->folder, folder);
    QCOMPARE(file->command, u"mine"_s);
    QCOMPARE(file->name, u"My command"_s);
    QCOMPARE(file->description, u"What it does"_s);
    QCOMPARE(file->icon, folder + "/icons/icon.png"_L1);
    QCOMPARE(file->exec, QStringList({u"python3"_s, u"a.py"_s, u"--text={query}"_s}));
    QVERIFY(file->output == CommandFile::Output::Lines);
    QVERIFY(file->action == CommandFile::Action::Run);
    QCOMPARE(file->run, QStringList({u"./start"_s, u"{arg}"_s}));
    QCOMPARE(file->timeoutMs, 1500);
    QCOMPARE(file->delayMs, 200);
}

void tst_CommandFile::hasDefaultsForOptionalKeys()
{
    const QString folder = commandfolder::write(u"a"_s, commandfolder::smallestFile(u"mine"_s));
    QString error;
    const std::optional<CommandFile> file = CommandFile::load(folder, error);
    QVERIFY2(file, qUtf8Printable(error));
    QCOMPARE(file->description, QString());
    QCOMPARE(file->icon, QString());
    QVERIFY(file->output == CommandFile::Output::Items);
    QVERIFY(file->action == CommandFile::Action::Copy);
    QCOMPARE(file->run, QStringList());
    QCOMPARE(file->timeoutMs, 5000);
    QCOMPARE(file->delayMs, 0);
}

void tst_CommandFile::readsTheTextsOfTheUsersLanguage_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");

    QTest::newRow("Chinese: both") << QByteArray("zh_CN.UTF-8") << u"我的命令"_s << u"说明"_s;
    QTest::newRow("English: without a language")
        << QByteArray("en_GB.UTF-8") << u"My command"_s << u"What it does"_s;
    QTest::newRow("French: without a language")
        << QByteArray("fr_FR.UTF-8") << u"My command"_s << u"What it does"_s;
    QTest::newRow("Swiss German: the language alone")
        << QByteArray("de_CH.UTF-8") << u"Mein Befehl"_s << u"What it does"_s;
}

void tst_CommandFile::readsTheTextsOfTheUsersLanguage()
{
    QFETCH(const QByteArray, language);
    QJsonObject json = commandfolder::smallestFile(u"mine"_s);
    json["description"_L1] = u"What it does"_s;
    json["name[zh_CN]"_L1] = u"我的命令"_s;
    json["description[zh_CN]"_L1] = u"说明"_s;
    json["name[de]"_L1] = u"Mein Befehl"_s;
    const QString folder = commandfolder::write(u"a"_s, json);

    const QByteArray before = qgetenv("LC_ALL");
    qputenv("LC_ALL", language);
    QString error;
    const std::optional<CommandFile> file = CommandFile::load(folder, error);
    qputenv("LC_ALL", before);
    QVERIFY2(file, qUtf8Printable(error));
    QTEST(file->name, "name");
    QTEST(file->description, "description");
}

void tst_CommandFile::namesTheKeyAndWhatItExpects_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("expected");

    const QString word = u"at most 32 characters in lower case, without blanks"_s;
    const QString notEmpty = u"a string that is not empty"_s;
    const QString program = u"a list of strings: a program and its arguments"_s;
    const QJsonValue none(QJsonValue::Undefined);
    const auto add = [](const char *name, const QString &key, const QJsonValue &value,
                        const QString &expected) {
        QTest::newRow(name) << key << value << expected;
    };
    add("no command", u"command"_s, none, notEmpty);
    add("command of another type", u"command"_s, 7, u"a string"_s);
    add("upper case", u"command"_s, u"Mine"_s, word);
    add("blank inside", u"command"_s, u"my command"_s, word);
    add("control character", u"command"_s, u"my\a"_s, word);
    add("33 characters", u"command"_s, QString(33, u'a'), word);
    add("no name", u"name"_s, none, notEmpty);
    add("blank name", u"name"_s, u" "_s, notEmpty);
    add("translated name of another type", u"name[zh_CN]"_s, true, u"a string"_s);
    add("description of another type", u"description"_s, QJsonArray(), u"a string"_s);
    add("icon of another type", u"icon"_s, QJsonValue::Null, u"a string"_s);
    add("no program", u"exec"_s, none, program);
    add("program as a string", u"exec"_s, u"./program"_s, program);
    add("empty list", u"exec"_s, QJsonArray(), program);
    add("argument of another type", u"exec"_s, QJsonArray{u"a"_s, 1}, program);
    add("text as the program", u"exec"_s, QJsonArray{u"{query}"_s},
        u"a program without a place for the text"_s);
    add("no output", u"output"_s, none, uR"("items" or "lines")"_s);
    add("unknown output", u"output"_s, u"Items"_s, uR"("items" or "lines")"_s);
    add("unknown action", u"action"_s, u"delete"_s, uR"("copy" or "open" or "run")"_s);
    add("nothing to run", u"action"_s, u"run"_s, program);
    add("run without its action", u"run"_s, QJsonArray{u"a"_s}, uR"(the action "run")"_s);
    add("no time", u"timeoutMs"_s, 0, u"a whole number from 1 to 600000"_s);
    add("fraction", u"timeoutMs"_s, 1.5, u"a whole number from 1 to 600000"_s);
    add("time as a string", u"timeoutMs"_s, u"100"_s, u"a whole number from 1 to 600000"_s);
    add("negative delay", u"delayMs"_s, -1, u"a whole number from 0 to 60000"_s);
    add("long delay", u"delayMs"_s, 60'001, u"a whole number from 0 to 60000"_s);
    add("misspelt key", u"timeout"_s, 100, u"one of the known keys"_s);
    add("language of another key", u"icon[zh_CN]"_s, u"a"_s, u"one of the known keys"_s);
    add("empty language", u"name[]"_s, u"a"_s, u"one of the known keys"_s);
}

void tst_CommandFile::namesTheKeyAndWhatItExpects()
{
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);
    QFETCH(const QString, expected);
    QJsonObject json = commandfolder::smallestFile(u"mine"_s);
    json[key] = value;
    const QString folder = commandfolder::write(u"a"_s, json);
    const QString error = errorOf(folder);
    const QString wrongKey = error.section(": "_L1, 1, 1);
    QCOMPARE(wrongKey, value == u"run"_s ? u"run"_s : key);
    QCOMPARE(error.section(": "_L1, 2), "expected "_L1 + expected);
}

void tst_CommandFile::namesTheFile()
{
    const QString folder = commandfolder::write(u"a"_s, {});
    QVERIFY(errorOf(folder).startsWith(QDir::toNativeSeparators(folder + "/command.json: "_L1)));
}

void tst_CommandFile::refusesAMissingFile()
{
    QVERIFY(errorOf(testhome::path() + "/none"_L1).endsWith(": expected a regular file"_L1));
}

void tst_CommandFile::refusesWhatIsNoJson()
{
    testhome::writeFile(u"a/command.json"_s, "{\"command\": }");
    const QString error = errorOf(testhome::path() + "/a"_L1);
    QVERIFY2(error.contains(": expected JSON: "_L1), qUtf8Printable(error));
    QVERIFY2(error.contains("at byte 1"_L1), qUtf8Printable(error));
}

void tst_CommandFile::refusesWhatIsNoObject()
{
    testhome::writeFile(u"a/command.json"_s, "[]");
    QVERIFY(errorOf(testhome::path() + "/a"_L1).endsWith(": expected a JSON object"_L1));
}

void tst_CommandFile::refusesALargeFile()
{
    testhome::writeFile(u"a/command.json"_s, QByteArray(65'537, ' '));
    QVERIFY(errorOf(testhome::path() + "/a"_L1).endsWith(": expected at most 65536 bytes"_L1));
}

void tst_CommandFile::refusesWhatIsNoRegularFile()
{
    QDir(testhome::path()).mkdir(u"pipe"_s);
    const QString pipe = testhome::path() + "/pipe/command.json"_L1;
    QCOMPARE(QProcess::execute(u"mkfifo"_s, {pipe}), 0);
    QVERIFY(errorOf(testhome::path() + "/pipe"_L1).endsWith(": expected a regular file"_L1));

    const QString folder = commandfolder::write(u"a"_s, commandfolder::smallestFile(u"mine"_s));
    QDir(testhome::path()).mkdir(u"link"_s);
    QVERIFY(QFile::link(folder + "/command.json"_L1, testhome::path() + "/link/command.json"_L1));
    QVERIFY(errorOf(testhome::path() + "/link"_L1).endsWith(": expected a regular file"_L1));
}

void tst_CommandFile::findsAProgramWithASlashInTheFolder()
{
    CommandFile file;
    file.folder = testhome::path();
    QCOMPARE(file.programPath(u"./program"_s), testhome::path() + "/program"_L1);
    QCOMPARE(file.programPath(u"bin/program"_s), testhome::path() + "/bin/program"_L1);
    QCOMPARE(file.programPath(u"/usr/bin/env"_s),
             QDir(testhome::path()).absoluteFilePath(u"/usr/bin/env"_s));
    QCOMPARE(file.programPath(u"python3"_s), u"python3"_s);
}

VASKEL_TEST(tst_CommandFile, QCoreApplication)
#include "tst_CommandFile.moc"
