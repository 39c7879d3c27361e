// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
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

/// Sets PATH while it exists.
class SearchPath
{
public:
    explicit SearchPath(const QString &value)
        : m_before(qgetenv("PATH"))
    {
        qputenv("PATH", value.toLocal8Bit());
    }
    ~SearchPath() { qputenv("PATH", m_before); }
    Q_DISABLE_COPY_MOVE(SearchPath)

private:
    QByteArray m_before;
};

/// Works in a folder while it exists.
class CurrentFolder
{
public:
    explicit CurrentFolder(const QString &path)
        : m_before(QDir::currentPath())
    {
        QDir::setCurrent(path);
    }
    ~CurrentFolder() { QDir::setCurrent(m_before); }
    Q_DISABLE_COPY_MOVE(CurrentFolder)

private:
    QString m_before;
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
    void findsCommandsInTheSystemFoldersFirst_data();
    void findsCommandsInTheSystemFoldersFirst();
    void findsCommandsInNoRelativeFolder();
    void takesAPathAsItIs();
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

void tst_BuiltinPrograms::findsCommandsInTheSystemFoldersFirst_data()
{
    const QString windows = qEnvironmentVariable("SystemRoot");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("path");
    QTest::newRow("cmd") << u"cmd"_s << windows + uR"(\System32\cmd.exe)"_s;
    QTest::newRow("notepad") << u"notepad"_s << windows + uR"(\System32\notepad.exe)"_s;
    QTest::newRow("with its suffix") << u"cmd.exe"_s << windows + uR"(\System32\cmd.exe)"_s;
    // Wine has one in the folder of the commands as well.
    const QString explorer = windows + uR"(\System32\explorer.exe)"_s;
    QTest::newRow("explorer") << u"explorer"_s
                              << (QFile::exists(explorer) ? explorer
                                                          : windows + uR"(\explorer.exe)"_s);
}

void tst_BuiltinPrograms::findsCommandsInTheSystemFoldersFirst()
{
    QFETCH(QString, command);
    QFETCH(QString, path);
    const QString folder = testhome::path() + "/tmp"_L1;
    for (const auto &name : {u"cmd.exe"_s, u"notepad.exe"_s, u"explorer.exe"_s}) {
        testhome::writeFile("tmp/"_L1 + name, "planted");
    }
    const SearchPath searchPath(QDir::toNativeSeparators(folder));
    const CurrentFolder current(folder);
    QCOMPARE(platform::programFile(command).toLower(), path.toLower());
}

void tst_BuiltinPrograms::findsCommandsInNoRelativeFolder()
{
    const QString folder = testhome::path() + "/tmp"_L1;
    const QString path = QDir::toNativeSeparators(testhome::writeFile(u"tmp/own.exe"_s, "planted"));
    const CurrentFolder current(folder);
    for (const QString &relative : {u""_s, u"."_s, u";"_s, u".;.."_s}) {
        const SearchPath searchPath(relative);
        QCOMPARE(platform::programFile(u"own"_s), QString());
    }
    const SearchPath searchPath(QDir::toNativeSeparators(folder));
    QCOMPARE(platform::programFile(u"own"_s), path);
}

void tst_BuiltinPrograms::takesAPathAsItIs()
{
    for (const QString &path : {uR"(C:\a b\c.exe)"_s, u"C:/a/c"_s, uR"(.\c.exe)"_s}) {
        QCOMPARE(platform::programFile(path), path);
    }
}

VASKEL_TEST(tst_BuiltinPrograms, QCoreApplication)
#include "tst_BuiltinPrograms.moc"
