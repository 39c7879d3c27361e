// SPDX-License-Identifier: GPL-3.0-or-later
//
// Compares the documents for authors of commands, and the examples, with the program.
#include "commands/CommandFile.h"
#include "commands/CommandFolder.h"
#include "commands/ScriptAnswer.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString source = QStringLiteral(SOURCE_FOLDER "/");

QString readFile(const QString &path)
{
    QFile file(source + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The first captured group of each match.
QStringList captures(const QString &text, const QString &pattern)
{
    const QRegularExpression expression(pattern,
                                        QRegularExpression::MultilineOption
                                            | QRegularExpression::DotMatchesEverythingOption);
    QStringList found;
    for (const QRegularExpressionMatch &match : expression.globalMatch(text)) {
        found.append(match.captured(1));
    }
    return found;
}

// The code in the first column of the first table below the heading.
QStringList firstColumn(const QString &document, const QString &heading)
{
    const QString section = document.mid(document.indexOf(u'\n' + heading + u'\n')) + "\n\n"_L1;
    const QString table = captures(section, uR"(\n(\|.*?)\n\n)"_s).value(0);
    return captures(table + u'\n', uR"(^\| `([^`]+)`)"_s);
}

QStringList examples()
{
    return QDir(source + "examples/commands"_L1).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

} // namespace

class tst_CommandDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void hasCorrectJson_data() { addDocuments(); }
    void hasCorrectJson();
    void listsTheKeysOfTheFile_data() { addDocuments(); }
    void listsTheKeysOfTheFile();
    void listsTheExamples_data() { addDocuments(); }
    void listsTheExamples();
    void examplesAreCorrect();

private:
    static void addDocuments();
};

void tst_CommandDocuments::addDocuments()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("English") << u"docs/COMMANDS.md"_s;
    QTest::newRow("Chinese") << u"docs/COMMANDS.zh-CN.md"_s;
}

void tst_CommandDocuments::hasCorrectJson()
{
    QFETCH(const QString, path);
    const QStringList blocks = captures(readFile(path), u"^```json\n(.*?)^```$"_s);
    QCOMPARE(blocks.size(), 2);
    testhome::writeFile(u"a/command.json"_s, blocks[0].toUtf8());
    QString error;
    const std::optional<CommandFile> file = CommandFile::load(testhome::path() + "/a"_L1, error);
    QVERIFY2(file, qUtf8Printable(error));
    CommandFile items = *file;
    items.output = CommandFile::Output::Items;
    const ScriptAnswer answer = ScriptAnswer::parse(blocks[1].toUtf8(), items);
    QCOMPARE(answer.error, QString());
    QCOMPARE(answer.records.size(), 2);
}

void tst_CommandDocuments::listsTheKeysOfTheFile()
{
    QFETCH(const QString, path);
    const QStringList keys = firstColumn(readFile(path), u"## command.json"_s);
    QCOMPARE(keys, QStringList({u"command"_s, u"name"_s, u"description"_s, u"icon"_s, u"exec"_s,
                                u"output"_s, u"action"_s, u"run"_s, u"timeoutMs"_s, u"delayMs"_s}));
    // The program knows each of them.
    QJsonObject object = commandfolder::smallestFile(u"mine"_s);
    object["action"_L1] = u"run"_s;
    for (const QString &key : keys) {
        object[key] = QJsonObject();
        QString error;
        QVERIFY(!CommandFile::load(commandfolder::write(u"a"_s, object), error));
        QVERIFY2(error.contains(u": "_s + key + ": expected"_L1)
                     && !error.contains("known keys"_L1),
                 qUtf8Printable(error));
        object = commandfolder::smallestFile(u"mine"_s);
        object["action"_L1] = u"run"_s;
        object["run"_L1] = QJsonArray{u"true"_s};
    }
}

void tst_CommandDocuments::listsTheExamples()
{
    QFETCH(const QString, path);
    const QString document = readFile(path);
    const QString heading = path.contains("zh"_L1) ? u"## 示例"_s : u"## Examples"_s;
    QStringList commands;
    for (const QString &text : firstColumn(document, heading)) {
        commands.append(text.section(u' ', 0, 0));
    }
    commands.sort();
    QCOMPARE(commands, examples());
}

void tst_CommandDocuments::examplesAreCorrect()
{
    for (const QString &name : examples()) {
        QString error;
        const std::optional<CommandFile> file =
            CommandFile::load(source + "examples/commands/"_L1 + name, error);
        QVERIFY2(file, qUtf8Printable(error));
        QCOMPARE(file->command, name);
    }
}

VASKEL_TEST(tst_CommandDocuments, QCoreApplication)
#include "tst_CommandDocuments.moc"
