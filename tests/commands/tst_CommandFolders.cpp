// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/CommandFolders.h"

#include "commands/CommandFolder.h"
#include "commands/ScriptPlugin.h"
#include "core/PluginManager.h"
#include "plugins/CalcPlugin.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString sortedCommands(const PluginManager &manager)
{
    QStringList commands = manager.commands();
    commands.sort();
    return commands.join(u' ');
}

QJsonObject describedFile(const QString &command, const QString &description)
{
    QJsonObject file = commandfolder::smallestFile(command);
    file["description"_L1] = description;
    return file;
}

} // namespace

class tst_CommandFolders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void registersNothingWithoutAFolder();
    void registersACommandForEachFolder();
    void logsAndReturnsWhatIsWrong();
    void keepsBuiltInCommands();
    void keepsTheFirstOfTwoFoldersWithACommand();
    void usesTheFoldersOfTheSystem();
    void leavesOutALinkToElsewhere();
    void leavesOutAFolderThatOthersCanChange();
    void ignoresFilesBesideTheFolders();
    void registersAThousandFoldersAndNoMore();
};

void tst_CommandFolders::registersNothingWithoutAFolder()
{
    PluginManager manager;
    QCOMPARE(commandfolders::registerAll(manager), QStringList());
    QCOMPARE(sortedCommands(manager), QString());
}

void tst_CommandFolders::registersACommandForEachFolder()
{
    commandfolder::write(commandfolder::userFolder(u"a"_s), describedFile(u"one"_s, u"First"_s));
    commandfolder::write(commandfolder::userFolder(u"b"_s), commandfolder::smallestFile(u"two"_s));
    PluginManager manager;
    QCOMPARE(commandfolders::registerAll(manager), QStringList());
    QCOMPARE(sortedCommands(manager), u"one two"_s);
    QCOMPARE(manager.commandDescription(u"one"_s), u"First"_s);
    QCOMPARE(manager.commandDescription(u"two"_s), u"My command"_s);
    QCOMPARE(manager.configurablePlugins().size(), 2);
}

void tst_CommandFolders::logsAndReturnsWhatIsWrong()
{
    const QString folder = commandfolder::write(commandfolder::userFolder(u"a"_s), {});
    const QString line = QDir::toNativeSeparators(folder + "/command.json"_L1)
                         + ": command: expected a string that is not empty"_L1;
    PluginManager manager;
    QTest::ignoreMessage(QtWarningMsg, qUtf8Printable(line));
    QCOMPARE(commandfolders::registerAll(manager), QStringList(line));
    QCOMPARE(sortedCommands(manager), QString());
}

void tst_CommandFolders::keepsBuiltInCommands()
{
    commandfolder::write(commandfolder::userFolder(u"a"_s), commandfolder::smallestFile(u"calc"_s));
    PluginManager manager;
    CalcPlugin calculator;
    manager.registerPlugin(&calculator);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"command.json: command: expected"_s));
    const QStringList errors = commandfolders::registerAll(manager);
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().endsWith(
                 ": command: expected a command that is not built in, not \"calc\""_L1),
             qUtf8Printable(errors.first()));
    QCOMPARE(manager.pluginForCommand(u"calc"_s), &calculator);
}

void tst_CommandFolders::keepsTheFirstOfTwoFoldersWithACommand()
{
    commandfolder::write(commandfolder::userFolder(u"a"_s), describedFile(u"one"_s, u"First"_s));
    commandfolder::write(commandfolder::userFolder(u"b"_s), describedFile(u"one"_s, u"Second"_s));
    PluginManager manager;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"command.json: command: expected"_s));
    const QStringList errors = commandfolders::registerAll(manager);
    QCOMPARE(errors.size(), 1);
    QVERIFY(errors.first().contains(QDir::toNativeSeparators(u"/b/command.json"_s)));
    QCOMPARE(manager.commandDescription(u"one"_s), u"First"_s);
}

void tst_CommandFolders::usesTheFoldersOfTheSystem()
{
    const QString system = u"system/vaskel/commands/"_s;
    commandfolder::write(system + u'a', describedFile(u"one"_s, u"System"_s));
    commandfolder::write(system + u'b', describedFile(u"two"_s, u"System"_s));
    commandfolder::write(commandfolder::userFolder(u"z"_s), describedFile(u"one"_s, u"User"_s));
    PluginManager manager;
    QCOMPARE(commandfolders::registerAll(manager), QStringList());
    QCOMPARE(manager.commandDescription(u"one"_s), u"User"_s);
    QCOMPARE(manager.commandDescription(u"two"_s), u"System"_s);
}

void tst_CommandFolders::leavesOutALinkToElsewhere()
{
    const QString elsewhere =
        commandfolder::write(u"elsewhere"_s, commandfolder::smallestFile(u"one"_s));
    commandfolder::write(commandfolder::userFolder(u"b"_s), commandfolder::smallestFile(u"two"_s));
    const QString link = testhome::appDataPath() + "/commands/a"_L1;
    QVERIFY(QFile::link(elsewhere, link));
    PluginManager manager;
    const QString line = link + ": expected a folder, not a link to elsewhere"_L1;
    QTest::ignoreMessage(QtWarningMsg, qUtf8Printable(line));
    QCOMPARE(commandfolders::registerAll(manager), QStringList(line));
    QCOMPARE(sortedCommands(manager), u"two"_s);
}

void tst_CommandFolders::leavesOutAFolderThatOthersCanChange()
{
    const QString folder = commandfolder::write(commandfolder::userFolder(u"a"_s),
                                                commandfolder::smallestFile(u"one"_s));
    QFile::setPermissions(folder, QFile::permissions(folder) | QFile::WriteOther);
    PluginManager manager;
    const QString line = folder + ": expected a folder that no other user can change"_L1;
    QTest::ignoreMessage(QtWarningMsg, qUtf8Printable(line));
    QCOMPARE(commandfolders::registerAll(manager), QStringList(line));
    QCOMPARE(sortedCommands(manager), QString());
}

void tst_CommandFolders::ignoresFilesBesideTheFolders()
{
    testhome::writeFile(commandfolder::userFolder(u"README"_s), "text");
    PluginManager manager;
    QCOMPARE(commandfolders::registerAll(manager), QStringList());
}

void tst_CommandFolders::registersAThousandFoldersAndNoMore()
{
    for (int i = 0; i <= 1000; ++i) {
        const QString command = u"c%1"_s.arg(i, 4, 10, QChar(u'0'));
        commandfolder::write(commandfolder::userFolder(command),
                             commandfolder::smallestFile(command));
    }
    PluginManager manager;
    const QString line = QDir::toNativeSeparators(testhome::appDataPath() + "/commands"_L1)
                         + ": expected at most 1000 folders"_L1;
    QTest::ignoreMessage(QtWarningMsg, qUtf8Printable(line));
    QCOMPARE(commandfolders::registerAll(manager), QStringList(line));
    QCOMPARE(manager.commands().size(), 1000);
    QVERIFY(!manager.pluginForCommand(u"c1000"_s));
}

VASKEL_TEST(tst_CommandFolders, QCoreApplication)
#include "tst_CommandFolders.moc"
