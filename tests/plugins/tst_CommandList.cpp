// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/BuiltinPlugins.h"
#include "plugins/AppPlugin.h"
#include "plugins/CalcPlugin.h"
#include "plugins/DirectoryPlugin.h"
#include "plugins/FilePlugin.h"
#include "plugins/SettingsPlugin.h"
#include "plugins/TodoPlugin.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Plugins = std::vector<std::unique_ptr<IPlugin>>;

// The plugins of app/BuiltinPlugins.cpp; their commands do not depend on services.
Plugins createPlugins()
{
    Plugins plugins;
    plugins.push_back(std::make_unique<AppPlugin>(nullptr));
    plugins.push_back(std::make_unique<CalcPlugin>());
    plugins.push_back(std::make_unique<DirectoryPlugin>());
    plugins.push_back(std::make_unique<SettingsPlugin>(nullptr, nullptr));
    plugins.push_back(std::make_unique<FilePlugin>());
    plugins.push_back(std::make_unique<TodoPlugin>());
    return plugins;
}

/// Returns the text of a file; empty if it is missing.
QString readFile(const QString &path)
{
    QFile file(QStringLiteral(SOURCE_FOLDER "/") + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// Returns the text between the first mark and the next end, or the end of the text.
QString between(const QString &text, const QString &mark, const QString &end)
{
    const qsizetype at = text.indexOf(mark);
    if (at < 0) {
        return {};
    }
    const qsizetype from = at + mark.size();
    const qsizetype to = text.indexOf(end, from);
    return text.mid(from, to < 0 ? -1 : to - from);
}

/// Returns the first captured group of each match.
QStringList captures(const QString &text, const QString &pattern)
{
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    QStringList found;
    for (const QRegularExpressionMatch &match : expression.globalMatch(text)) {
        found.append(match.captured(1));
    }
    return found;
}

/// The first words of the code in the first column of the table "Command".
QStringList commandsOfReadme()
{
    const QString table = between(readFile(u"README.md"_s), u"\n| Command |"_s, u"\n\n"_s);
    const QStringList cells = captures(table, uR"(^\| ([^|]+) \|)"_s);
    return captures(cells.join(u'\n'), u"`([^ `]+)[^`]*`"_s);
}

/// The bold words of the tags in the section "Commands".
QStringList commandsOfManualPage()
{
    const QString page = readFile(u"packaging/linux/Vaskel.1"_s);
    const QString section = between(page, u"\n.SS Commands\n"_s, u"\n.S"_s);
    QStringList commands;
    const QStringList tags = captures(section, uR"(^\.TP\n\.B[IR]? (.+)$)"_s);
    for (const QString &tag : tags) {
        // Every second part is bold.
        const QStringList parts = QProcess::splitCommand(tag);
        for (qsizetype i = 0; i < parts.size(); i += 2) {
            commands.append(parts[i]);
        }
    }
    return commands;
}

/// The first words of the list items in this language; empty for English.
QStringList commandsOfMetadata(const QString &language)
{
    QStringList commands;
    QXmlStreamReader xml(readFile(u"packaging/linux/local.vaskel.Vaskel.metainfo.xml"_s));
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == "li"_L1
            && xml.attributes().value("xml:lang"_L1) == language) {
            commands.append(xml.readElementText().section(u' ', 0, 0));
        }
    }
    return xml.hasError() ? QStringList() : commands;
}

/// The line below the folder name in the diagram.
QStringList commandsOfDiagram()
{
    const QStringList lines = captures(readFile(u"docs/ARCHITECTURE.md"_s),
                                       uR"(\| plugins/ +\|.*\n.*\| ([a-z][a-z ]+[a-z]) \|)"_s);
    return lines.join(u' ').split(u' ', Qt::SkipEmptyParts);
}

/// One line, which a failing comparison shows completely.
QString sorted(QStringList names)
{
    names.sort();
    return names.join(u' ');
}

} // namespace

/// Compares every list of commands in the documents with the plugins.
class tst_CommandList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasThePluginsOfTheProgram();
    void isTheSameInEachDocument_data();
    void isTheSameInEachDocument();
};

void tst_CommandList::hasThePluginsOfTheProgram()
{
    QStringList created;
    for (const auto &plugin : createPlugins()) {
        created.append(QString::fromLatin1(plugin->metaObject()->className()));
    }
    const QString source = readFile(u"app/BuiltinPlugins.cpp"_s);
    QCOMPARE(sorted(captures(source, uR"(\bnew (\w+Plugin)\()"_s)), sorted(created));
    QCOMPARE(source.count(u".registerPlugin("_s), created.size());
}

void tst_CommandList::isTheSameInEachDocument_data()
{
    QTest::addColumn<QStringList>("named");
    QTest::addColumn<bool>("withAliases");

    QTest::newRow("README.md: all") << commandsOfReadme() << true;
    QTest::newRow("manual page: all") << commandsOfManualPage() << true;
    QTest::newRow("BuiltinPlugins.cpp: all") << builtinplugins::commands() << true;
    QTest::newRow("AppStream file, English: no aliases") << commandsOfMetadata({}) << false;
    QTest::newRow("AppStream file, Chinese: no aliases") << commandsOfMetadata(u"zh-CN"_s) << false;
    QTest::newRow("ARCHITECTURE.md: no aliases") << commandsOfDiagram() << false;
}

void tst_CommandList::isTheSameInEachDocument()
{
    QFETCH(const QStringList, named);
    QFETCH(const bool, withAliases);

    QStringList commands;
    for (const auto &plugin : createPlugins()) {
        commands.append(plugin->command());
        if (withAliases) {
            commands.append(plugin->aliases());
        }
    }
    QCOMPARE(sorted(named), sorted(commands));
}

VASKEL_TEST(tst_CommandList, QCoreApplication)
#include "tst_CommandList.moc"
