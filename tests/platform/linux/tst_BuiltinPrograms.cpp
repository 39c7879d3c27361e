// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

#include "platform/StartMenu.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

using platform::BuiltinProgram;
Q_DECLARE_METATYPE(platform::BuiltinProgram)

class tst_BuiltinPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void namesACommandWhereNothingIsInstalled_data();
    void namesACommandWhereNothingIsInstalled();
    void takesAWellKnownProgram_data();
    void takesAWellKnownProgram();
    void takesTheProgramOfTheRunningDesktop_data();
    void takesTheProgramOfTheRunningDesktop();
    void passesOverWhatIsNotForThisDesktop();
    void passesOverWhatCannotStart_data();
    void passesOverWhatCannotStart();
    void prefersTheDefaultProgram_data();
    void prefersTheDefaultProgram();
    void usesAnAssociatedProgramLast_data();
    void usesAnAssociatedProgramLast();
    void paintsWithAnEditorOnly_data();
    void paintsWithAnEditorOnly();
    void describesTheProgramInTheUsersLanguage();
    void browsesToTheStartPage();
    void translatesTheStartPage();
    void searchesAtEachCall();
    void watchesNothing();
};

namespace {

class Chinese : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        const bool isKnown = context == "AppLauncher"_ba && text == "Open Bing Search"_ba;
        return isKnown ? u"打开必应搜索"_s : QString();
    }
};

QString installed(const QString &id, const QByteArray &lines = {})
{
    return testhome::writeFile("system/applications/"_L1 + id + ".desktop"_L1,
                               "[Desktop Entry]\nType=Application\nName=Any\nExec=true\n" + lines
                                   + '\n');
}

QString pathOf(BuiltinProgram program)
{
    return platform::builtinProgram(program).path;
}

void setDefault(const QByteArray &contentType, const QByteArray &ids)
{
    testhome::writeFile(u"config/mimeapps.list"_s,
                        "[Default Applications]\n" + contentType + '=' + ids + '\n');
}

void associate(const QByteArray &contentType, const QByteArray &ids)
{
    testhome::writeFile(u"system/applications/mimeinfo.cache"_s,
                        "[MIME Cache]\n" + contentType + '=' + ids + '\n');
}

} // namespace

void tst_BuiltinPrograms::init()
{
    testhome::reset();
    qunsetenv("XDG_CURRENT_DESKTOP");
    qputenv("LANGUAGE", "");
}

void tst_BuiltinPrograms::namesACommandWhereNothingIsInstalled_data()
{
    QTest::addColumn<BuiltinProgram>("program");
    QTest::addColumn<QByteArray>("desktop");
    QTest::addColumn<QString>("command");
    const QByteArray kde = "KDE";
    QTest::newRow("Notepad") << BuiltinProgram::Notepad << QByteArray() << u"gnome-text-editor"_s;
    QTest::newRow("Calculator") << BuiltinProgram::Calculator << QByteArray()
                                << u"gnome-calculator"_s;
    QTest::newRow("Paint") << BuiltinProgram::Paint << QByteArray() << u"drawing"_s;
    QTest::newRow("Command Prompt")
        << BuiltinProgram::CommandPrompt << QByteArray() << u"gnome-terminal"_s;
    QTest::newRow("File Explorer") << BuiltinProgram::FileExplorer << QByteArray() << u"nautilus"_s;
    QTest::newRow("Task Manager") << BuiltinProgram::TaskManager << QByteArray()
                                  << u"gnome-system-monitor"_s;
    QTest::newRow("Settings") << BuiltinProgram::Settings << QByteArray()
                              << u"gnome-control-center"_s;
    QTest::newRow("Notepad of KDE") << BuiltinProgram::Notepad << kde << u"kwrite"_s;
    QTest::newRow("Calculator of KDE") << BuiltinProgram::Calculator << kde << u"kcalc"_s;
    QTest::newRow("Paint of KDE") << BuiltinProgram::Paint << kde << u"kolourpaint"_s;
    QTest::newRow("Command Prompt of KDE") << BuiltinProgram::CommandPrompt << kde << u"konsole"_s;
    QTest::newRow("File Explorer of KDE") << BuiltinProgram::FileExplorer << kde << u"dolphin"_s;
    QTest::newRow("Task Manager of KDE")
        << BuiltinProgram::TaskManager << kde << u"plasma-systemmonitor"_s;
    QTest::newRow("Settings of KDE") << BuiltinProgram::Settings << kde << u"systemsettings"_s;
}

void tst_BuiltinPrograms::namesACommandWhereNothingIsInstalled()
{
    QFETCH(BuiltinProgram, program);
    QFETCH(QByteArray, desktop);
    QFETCH(QString, command);
    qputenv("XDG_CURRENT_DESKTOP", desktop);
    const platform::ProgramInfo info = platform::builtinProgram(program);
    QCOMPARE(info.path, command);
    QCOMPARE(info.description, QString());
    QCOMPARE(info.iconSource, command);
}

void tst_BuiltinPrograms::takesAWellKnownProgram_data()
{
    QTest::addColumn<BuiltinProgram>("program");
    QTest::addColumn<QString>("id");
    QTest::newRow("Notepad") << BuiltinProgram::Notepad << u"org.xfce.mousepad"_s;
    QTest::newRow("Calculator") << BuiltinProgram::Calculator << u"galculator"_s;
    QTest::newRow("Paint") << BuiltinProgram::Paint << u"mtpaint"_s;
    QTest::newRow("Command Prompt") << BuiltinProgram::CommandPrompt << u"debian-xterm"_s;
    QTest::newRow("File Explorer") << BuiltinProgram::FileExplorer << u"thunar"_s;
    QTest::newRow("Task Manager") << BuiltinProgram::TaskManager << u"htop"_s;
    QTest::newRow("Settings") << BuiltinProgram::Settings << u"obconf"_s;
}

void tst_BuiltinPrograms::takesAWellKnownProgram()
{
    QFETCH(BuiltinProgram, program);
    QFETCH(QString, id);
    const QString path = installed(id);
    const platform::ProgramInfo info = platform::builtinProgram(program);
    QCOMPARE(info.path, path);
    QCOMPARE(info.description, u"Any"_s);
    QCOMPARE(info.iconSource, path);
}

void tst_BuiltinPrograms::takesTheProgramOfTheRunningDesktop_data()
{
    QTest::addColumn<QByteArray>("desktop");
    QTest::addColumn<QString>("id");
    QTest::newRow("none") << QByteArray() << u"org.gnome.Nautilus"_s;
    QTest::newRow("another") << QByteArray("Enlightenment") << u"org.gnome.Nautilus"_s;
    QTest::newRow("XFCE") << QByteArray("XFCE") << u"thunar"_s;
    QTest::newRow("Cinnamon") << QByteArray("X-Cinnamon") << u"nemo"_s;
    QTest::newRow("by its second name") << QByteArray("Lubuntu:LXQt") << u"pcmanfm-qt"_s;
}

void tst_BuiltinPrograms::takesTheProgramOfTheRunningDesktop()
{
    QFETCH(QByteArray, desktop);
    QFETCH(QString, id);
    for (const auto &other : {u"org.gnome.Nautilus"_s, u"thunar"_s, u"nemo"_s, u"pcmanfm-qt"_s}) {
        installed(other);
    }
    qputenv("XDG_CURRENT_DESKTOP", desktop);
    QCOMPARE(pathOf(BuiltinProgram::FileExplorer), installed(id));
}

void tst_BuiltinPrograms::passesOverWhatIsNotForThisDesktop()
{
    installed(u"org.gnome.Settings"_s, "OnlyShowIn=GNOME;");
    const QString path = installed(u"kdesystemsettings"_s, "NotShowIn=KDE;");
    QCOMPARE(pathOf(BuiltinProgram::Settings), path);

    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    QProcess lister;
    lister.start(QStringLiteral(LISTER), {});
    QVERIFY(lister.waitForFinished());
    QCOMPARE(lister.readAll(), "systemsettings");
}

void tst_BuiltinPrograms::passesOverWhatCannotStart_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::newRow("hidden") << QByteArray("Hidden=true");
    QTest::newRow("TryExec missing") << QByteArray("TryExec=no-such-program");
    QTest::newRow("program missing") << QByteArray("Exec=no-such-program");
    QTest::newRow("broken") << QByteArray("nonsense");
}

void tst_BuiltinPrograms::passesOverWhatCannotStart()
{
    QFETCH(QByteArray, lines);
    installed(u"org.gnome.Calculator"_s, lines);
    const QString path = installed(u"speedcrunch"_s);
    QCOMPARE(pathOf(BuiltinProgram::Calculator), path);
}

void tst_BuiltinPrograms::prefersTheDefaultProgram_data()
{
    QTest::addColumn<BuiltinProgram>("program");
    QTest::addColumn<QByteArray>("contentType");
    QTest::addColumn<QString>("wellKnown");
    QTest::newRow("Notepad") << BuiltinProgram::Notepad << QByteArray("text/plain")
                             << u"org.gnome.TextEditor"_s;
    QTest::newRow("File Explorer")
        << BuiltinProgram::FileExplorer << QByteArray("inode/directory") << u"org.gnome.Nautilus"_s;
}

void tst_BuiltinPrograms::prefersTheDefaultProgram()
{
    QFETCH(BuiltinProgram, program);
    QFETCH(QByteArray, contentType);
    QFETCH(QString, wellKnown);
    const QString fallback = installed(wellKnown);
    const QString path = installed(u"mine"_s, "NoDisplay=true");
    setDefault(contentType, "gone.desktop;mine.desktop");
    QCOMPARE(pathOf(program), path);
    setDefault(contentType, "gone.desktop");
    QCOMPARE(pathOf(program), fallback);
}

void tst_BuiltinPrograms::usesAnAssociatedProgramLast_data()
{
    prefersTheDefaultProgram_data();
}

void tst_BuiltinPrograms::usesAnAssociatedProgramLast()
{
    QFETCH(BuiltinProgram, program);
    QFETCH(QByteArray, contentType);
    QFETCH(QString, wellKnown);
    const QString path = installed(u"archiver"_s);
    associate(contentType, "archiver.desktop");
    QCOMPARE(pathOf(program), path);
    const QString better = installed(wellKnown);
    QCOMPARE(pathOf(program), better);
}

void tst_BuiltinPrograms::paintsWithAnEditorOnly_data()
{
    QTest::addColumn<QByteArray>("categories");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("editor") << QByteArray("Graphics;2DGraphics;RasterGraphics;GTK;") << true;
    QTest::newRow("simple editor") << QByteArray("Graphics;2DGraphics;") << true;
    QTest::newRow("viewer") << QByteArray("Graphics;2DGraphics;RasterGraphics;Viewer;") << false;
    QTest::newRow("album") << QByteArray("Graphics;Photography;") << false;
    QTest::newRow("browser") << QByteArray("Network;WebBrowser;") << false;
}

void tst_BuiltinPrograms::paintsWithAnEditorOnly()
{
    QFETCH(QByteArray, categories);
    QFETCH(bool, isTaken);
    const QString path = installed(u"mine"_s, "Categories=" + categories);
    associate("image/png", "mine.desktop");
    QCOMPARE(pathOf(BuiltinProgram::Paint), isTaken ? path : u"drawing"_s);
    const QString fallback = installed(u"gimp"_s);
    setDefault("image/png", "mine.desktop");
    QCOMPARE(pathOf(BuiltinProgram::Paint), isTaken ? path : fallback);
}

void tst_BuiltinPrograms::describesTheProgramInTheUsersLanguage()
{
    installed(u"org.gnome.Calculator"_s, "Name[zh_CN]=计算器");
    qputenv("LANGUAGE", "zh_CN");
    QCOMPARE(platform::builtinProgram(BuiltinProgram::Calculator).description, u"计算器"_s);
}

void tst_BuiltinPrograms::browsesToTheStartPage()
{
    const QString address = u"https://www.bing.com/"_s;
    platform::ProgramInfo info = platform::builtinProgram(BuiltinProgram::Browser);
    QCOMPARE(info.path, address);
    QCOMPARE(info.description, u"Open Bing Search"_s);
    QCOMPARE(info.iconSource, address);

    const QString path = installed(u"mine"_s);
    setDefault("x-scheme-handler/https", "mine.desktop");
    info = platform::builtinProgram(BuiltinProgram::Browser);
    QCOMPARE(info.path, address);
    QCOMPARE(info.iconSource, path);
}

void tst_BuiltinPrograms::translatesTheStartPage()
{
    Chinese translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(platform::builtinProgram(BuiltinProgram::Browser).description, u"打开必应搜索"_s);
}

void tst_BuiltinPrograms::searchesAtEachCall()
{
    QCOMPARE(pathOf(BuiltinProgram::TaskManager), u"gnome-system-monitor"_s);
    const QString path = installed(u"htop"_s);
    QCOMPARE(pathOf(BuiltinProgram::TaskManager), path);
    QVERIFY(QFile::remove(path));
    QCOMPARE(pathOf(BuiltinProgram::TaskManager), u"gnome-system-monitor"_s);
}

// A thread that watches settings would keep waking the hidden program up.
void tst_BuiltinPrograms::watchesNothing()
{
    const QDir threads(u"/proc/self/task"_s);
    const qsizetype before = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    const QString path = installed(u"mine"_s);
    setDefault("text/plain", "mine.desktop");
    QCOMPARE(pathOf(BuiltinProgram::Notepad), path);
    QVERIFY(platform::startMenuNames(testhome::path() + "/system/applications"_L1, {path})
                .contains(path));
    QCOMPARE(threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), before);
}

VASKEL_TEST(tst_BuiltinPrograms, QCoreApplication)
#include "tst_BuiltinPrograms.moc"
