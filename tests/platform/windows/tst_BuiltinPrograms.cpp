// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

#include "support/TestProgram.h"

#include <QScopeGuard>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

using platform::BuiltinProgram;
Q_DECLARE_METATYPE(platform::BuiltinProgram)

namespace {

/// Encloses every text of the launcher in brackets.
class BracketTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "AppLauncher") == 0 ? u"[%1]"_s.arg(QLatin1StringView(text))
                                                    : QString();
    }
};

} // namespace

class tst_BuiltinPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheProgramsOfWindows_data();
    void namesTheProgramsOfWindows();
    void asksForTheSystemFolderAtEachCall();
    void doesWithoutASystemFolder();
    void describesInTheUsersLanguage();
};

void tst_BuiltinPrograms::namesTheProgramsOfWindows_data()
{
    const QString system = qEnvironmentVariable("SystemRoot") + u'\\';
    QTest::addColumn<BuiltinProgram>("program");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("iconSource");
    QTest::newRow("Notepad") << BuiltinProgram::Notepad << u"notepad"_s << u"Windows Notepad"_s
                             << system + uR"(System32\notepad.exe)"_s;
    QTest::newRow("Calculator") << BuiltinProgram::Calculator << u"calc"_s
                                << u"Windows Calculator"_s << system + uR"(System32\calc.exe)"_s;
    QTest::newRow("Paint") << BuiltinProgram::Paint << u"mspaint"_s << u"Windows Paint"_s
                           << system + uR"(System32\mspaint.exe)"_s;
    QTest::newRow("Command Prompt") << BuiltinProgram::CommandPrompt << u"cmd"_s
                                    << u"CMD Command Line"_s << system + uR"(System32\cmd.exe)"_s;
    QTest::newRow("File Explorer") << BuiltinProgram::FileExplorer << u"explorer"_s
                                   << u"File Explorer"_s << system + u"explorer.exe"_s;
    QTest::newRow("Task Manager") << BuiltinProgram::TaskManager << u"taskmgr"_s
                                  << u"Windows Task Manager"_s
                                  << system + uR"(System32\taskmgr.exe)"_s;
    QTest::newRow("Settings") << BuiltinProgram::Settings << u"ms-settings:"_s
                              << u"Windows Settings"_s << u"ms-settings:"_s;
    QTest::newRow("Browser") << BuiltinProgram::Browser << u"https://www.bing.com/"_s
                             << u"Open Bing Search"_s << u"https://www.bing.com/"_s;
}

void tst_BuiltinPrograms::namesTheProgramsOfWindows()
{
    QFETCH(BuiltinProgram, program);
    const platform::ProgramInfo info = platform::builtinProgram(program);
    QTEST(info.path, "path");
    QTEST(info.description, "description");
    QTEST(info.iconSource, "iconSource");
}

void tst_BuiltinPrograms::asksForTheSystemFolderAtEachCall()
{
    const QByteArray before = qgetenv("SystemRoot");
    const auto restore = qScopeGuard([&before] { qputenv("SystemRoot", before); });
    qputenv("SystemRoot", "D:\\Other");
    QCOMPARE(platform::builtinProgram(BuiltinProgram::Notepad).iconSource,
             uR"(D:\Other\System32\notepad.exe)"_s);
}

void tst_BuiltinPrograms::doesWithoutASystemFolder()
{
    const QByteArray before = qgetenv("SystemRoot");
    const auto restore = qScopeGuard([&before] { qputenv("SystemRoot", before); });
    qunsetenv("SystemRoot");
    const platform::ProgramInfo info = platform::builtinProgram(BuiltinProgram::FileExplorer);
    QCOMPARE(info.path, u"explorer"_s);
    QCOMPARE(info.iconSource, uR"(\explorer.exe)"_s);
}

void tst_BuiltinPrograms::describesInTheUsersLanguage()
{
    BracketTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(platform::builtinProgram(BuiltinProgram::Paint).description, u"[Windows Paint]"_s);
    QCOMPARE(platform::builtinProgram(BuiltinProgram::Browser).description,
             u"[Open Bing Search]"_s);
}

VASKEL_TEST(tst_BuiltinPrograms, QCoreApplication)
#include "tst_BuiltinPrograms.moc"
