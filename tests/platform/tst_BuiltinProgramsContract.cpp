// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

#include "platform/World.h"
#include "support/TestProgram.h"

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

VASKEL_TEST(tst_BuiltinProgramsContract, QCoreApplication)
#include "tst_BuiltinProgramsContract.moc"
