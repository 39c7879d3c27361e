// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

#include "platform/World.h"

#include <QTest>

using namespace Qt::StringLiterals;

using platform::BuiltinProgram;
Q_DECLARE_METATYPE(platform::BuiltinProgram)

class tst_BuiltinProgramsContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void alwaysNamesAPath_data();
    void alwaysNamesAPath();
    void hasNothingToSayOfWhatIsMissing();
    void tellsOfAnInstalledProgram();
};

void tst_BuiltinProgramsContract::alwaysNamesAPath_data()
{
    QTest::addColumn<BuiltinProgram>("program");
    QTest::newRow("Notepad") << BuiltinProgram::Notepad;
    QTest::newRow("Calculator") << BuiltinProgram::Calculator;
    QTest::newRow("Paint") << BuiltinProgram::Paint;
    QTest::newRow("Command Prompt") << BuiltinProgram::CommandPrompt;
    QTest::newRow("File Explorer") << BuiltinProgram::FileExplorer;
    QTest::newRow("Task Manager") << BuiltinProgram::TaskManager;
    QTest::newRow("Settings") << BuiltinProgram::Settings;
    QTest::newRow("Browser") << BuiltinProgram::Browser;
}

void tst_BuiltinProgramsContract::alwaysNamesAPath()
{
    QFETCH(BuiltinProgram, program);
    const QString path = platform::builtinProgram(program).path;
    QVERIFY(!path.isEmpty());
    QCOMPARE(platform::builtinProgram(program).path, path);
}

void tst_BuiltinProgramsContract::hasNothingToSayOfWhatIsMissing()
{
    QCOMPARE(platform::builtinProgram(BuiltinProgram::Notepad).description, QString());
}

void tst_BuiltinProgramsContract::tellsOfAnInstalledProgram()
{
    const QString path = world::install(1, u"editor"_s, u"记事本"_s);
    world::makeTextEditor(path);
    const platform::ProgramInfo info = platform::builtinProgram(BuiltinProgram::Notepad);
    QCOMPARE(info.path, path);
    QCOMPARE(info.description, u"记事本"_s);
    QCOMPARE(info.iconSource, path);
}

QTEST_GUILESS_MAIN(tst_BuiltinProgramsContract)
#include "tst_BuiltinProgramsContract.moc"
