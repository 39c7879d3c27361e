// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/AppLauncher.h"

#include "launcher/LauncherTest.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QSet>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;
using namespace launchertest;

namespace {

// Translates a few texts of one context; a text of another context stays English.
class LauncherTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        if (qstrcmp(context, "AppLauncher") != 0) {
            return {};
        }
        return m_texts.value(QString::fromUtf8(source));
    }

private:
    const QHash<QString, QString> m_texts = {
        {u"Notepad"_s, u"记事本"_s},
        {u"Calculator"_s, u"计算器"_s},
        {u"Start Menu"_s, u"开始菜单"_s},
    };
};

QStringList builtinNames()
{
    return {u"Notepad"_s,       u"Calculator"_s,   u"Paint"_s,    u"Command Prompt"_s,
            u"File Explorer"_s, u"Task Manager"_s, u"Settings"_s, u"Browser"_s};
}

} // namespace

class tst_AppLauncherCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }
    void cleanupTestCase() { fakePlatform() = FakePlatform(); }

    void hasOnlyTheBuiltinsWhenTheFoldersAreEmpty();
    void takesTheBuiltinsFromTheSystem();
    void translatesNamesAndFolderLabels();
    void skipsARootThatDoesNotExist();
    void keepsTheUsersFileWhenTheCommonFolderHasItToo();
    void keepsTheRootsFileWhenASubfolderHasItToo();
    void keepsTheFirstSubfoldersFile();
    void labelsASubfoldersFiles();
    void comparesDisplayedNamesAndNotFileNames();
    void takesTheNameThatTheSystemGives();
    void removesOnlyTheLastSuffix();
    void listsALinkWithoutAName();
    void keepsNamesThatDifferInCase();
    void keepsALinkNamedLikeABuiltin();
    void skipsAnUnlistedFileAndKeepsItsNameFree();
    void readsOneLevelOfSubfolders();
    void listsOnlyLinks();
    void ordersByNameIgnoringCase();
    void goesThroughRootsThenTheirSubfolders();
    void survivesCyclicSymbolicLinks();
    void asksForTheNameUnderTheRoot();
    void doesNotScanAgain();
    void listsFiveThousandFiles();
};

void tst_AppLauncherCatalogue::hasOnlyTheBuiltinsWhenTheFoldersAreEmpty()
{
    const AppLauncher launcher;
    QCOMPARE(column(launcher.search(QString()), u"name"_s), builtinNames());
}

void tst_AppLauncherCatalogue::takesTheBuiltinsFromTheSystem()
{
    QStringList paths;
    QStringList descriptions;
    for (int program = 0; program < builtinCount; ++program) {
        paths.append(u"command%1"_s.arg(program));
        descriptions.append(u"Description %1"_s.arg(program));
        fakePlatform().builtinPrograms.insert(
            program, {paths.last(), descriptions.last(), u"source%1"_s.arg(program)});
    }

    const AppLauncher launcher;
    const QVariantList records = launcher.search(QString());
    QCOMPARE(column(records, u"path"_s), paths);
    QCOMPARE(column(records, u"desc"_s), descriptions);
    for (int program = 0; program < builtinCount; ++program) {
        QVERIFY(fakePlatform().shellPixmapCalls.contains(u"source%1"_s.arg(program)));
    }
}

void tst_AppLauncherCatalogue::translatesNamesAndFolderLabels()
{
    addFile(u"user/A.link"_s);
    addFile(u"user/Tools/B.link"_s);
    LauncherTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));

    const AppLauncher launcher;
    const QStringList names = column(launcher.search(QString()), u"name"_s);
    QCOMPARE(names.mid(0, 3), QStringList({u"记事本"_s, u"计算器"_s, u"Paint"_s}));
    QCOMPARE(column(startMenuRecords(launcher), u"desc"_s),
             QStringList({u"开始菜单"_s, u"开始菜单 / Tools"_s}));
    QCOMPARE(column(launcher.pinnedApps(), u"name"_s),
             QStringList({u"计算器"_s, u"Task Manager"_s}));
}

void tst_AppLauncherCatalogue::skipsARootThatDoesNotExist()
{
    fakePlatform().startMenuRoots.prepend(testhome::path() + "/menu/nowhere"_L1);
    addFile(u"common/A.link"_s);

    QCOMPARE(startMenuNames(AppLauncher()), QStringList(u"A"_s));
}

void tst_AppLauncherCatalogue::keepsTheUsersFileWhenTheCommonFolderHasItToo()
{
    addFile(u"common/A.link"_s);
    const QString path = addFile(u"user/A.link"_s);

    const AppLauncher launcher;
    QCOMPARE(column(startMenuRecords(launcher), u"path"_s), QStringList(path));
}

void tst_AppLauncherCatalogue::keepsTheRootsFileWhenASubfolderHasItToo()
{
    addFile(u"user/Aaa/App.link"_s);
    const QString path = addFile(u"user/App.link"_s);

    const AppLauncher launcher;
    const QVariantList records = startMenuRecords(launcher);
    QCOMPARE(column(records, u"path"_s), QStringList(path));
    QCOMPARE(column(records, u"desc"_s), QStringList(u"Start Menu"_s));
}

void tst_AppLauncherCatalogue::keepsTheFirstSubfoldersFile()
{
    addFile(u"user/Second/App.link"_s);
    addFile(u"user/First/App.link"_s);
    addFile(u"common/App.link"_s);

    const AppLauncher launcher;
    QCOMPARE(column(startMenuRecords(launcher), u"desc"_s), QStringList(u"Start Menu / First"_s));
}

void tst_AppLauncherCatalogue::labelsASubfoldersFiles()
{
    addFile(u"user/Office Tools/Writer.link"_s);

    const AppLauncher launcher;
    QCOMPARE(column(startMenuRecords(launcher), u"desc"_s),
             QStringList(u"Start Menu / Office Tools"_s));
}

void tst_AppLauncherCatalogue::comparesDisplayedNamesAndNotFileNames()
{
    const QString first = addFile(u"user/a.link"_s);
    const QString second = addFile(u"user/b.link"_s);
    const QString third = addFile(u"common/a.link"_s);
    fakePlatform().startMenuNames = {{first, u"Editor"_s}, {second, u"Editor"_s}};

    const AppLauncher launcher;
    QCOMPARE(column(startMenuRecords(launcher), u"path"_s), QStringList({first, third}));
    QCOMPARE(startMenuNames(launcher), QStringList({u"Editor"_s, u"a"_s}));
}

void tst_AppLauncherCatalogue::takesTheNameThatTheSystemGives()
{
    const QString path = addFile(u"user/editor.link"_s);
    fakePlatform().startMenuNames.insert(path, u"文本编辑器"_s);

    const AppLauncher launcher;
    QCOMPARE(startMenuNames(launcher), QStringList(u"文本编辑器"_s));
    QCOMPARE(column(launcher.search(u"wbbjq"_s), u"path"_s), QStringList(path));
}

void tst_AppLauncherCatalogue::removesOnlyTheLastSuffix()
{
    addFile(u"user/Foo.Bar.link"_s);
    QCOMPARE(startMenuNames(AppLauncher()), QStringList(u"Foo.Bar"_s));
}

void tst_AppLauncherCatalogue::listsALinkWithoutAName()
{
    const QString path = addFile(u"user/Nameless.link"_s);
    fakePlatform().startMenuNames.insert(path, QString());
    QCOMPARE(column(startMenuRecords(AppLauncher()), u"path"_s), QStringList(path));
}

void tst_AppLauncherCatalogue::keepsNamesThatDifferInCase()
{
    addFile(u"user/editor.link"_s);
    addFile(u"common/Editor.link"_s);
    QCOMPARE(startMenuNames(AppLauncher()), QStringList({u"editor"_s, u"Editor"_s}));
}

void tst_AppLauncherCatalogue::keepsALinkNamedLikeABuiltin()
{
    addFile(u"user/Calculator.link"_s);

    const AppLauncher launcher;
    QCOMPARE(column(launcher.search(QString()), u"name"_s), builtinNames() << u"Calculator"_s);
}

void tst_AppLauncherCatalogue::skipsAnUnlistedFileAndKeepsItsNameFree()
{
    fakePlatform().unlistedFiles.append(addFile(u"user/App.link"_s));
    const QString path = addFile(u"common/App.link"_s);

    const AppLauncher launcher;
    QCOMPARE(column(startMenuRecords(launcher), u"path"_s), QStringList(path));
}

void tst_AppLauncherCatalogue::readsOneLevelOfSubfolders()
{
    addFile(u"user/One/Near.link"_s);
    addFile(u"user/One/Two/Far.link"_s);
    QCOMPARE(startMenuNames(AppLauncher()), QStringList(u"Near"_s));
}

void tst_AppLauncherCatalogue::listsOnlyLinks()
{
    addFile(u"user/App.link"_s);
    addFile(u"user/Capitals.LINK"_s);
    addFile(u"user/Readme.txt"_s);
    addFile(u"user/Uplink"_s);
    addFile(u"user/Tools/Tool.link.bak"_s);
    QVERIFY(QDir().mkpath(userMenu() + "/Folder.link"_L1));

    QCOMPARE(startMenuNames(AppLauncher()), QStringList({u"App"_s, u"Capitals"_s}));
}

void tst_AppLauncherCatalogue::ordersByNameIgnoringCase()
{
    for (const auto &name : {u"delta"_s, u"Charlie"_s, u"alpha"_s, u"Bravo"_s}) {
        addFile(u"user/%1.link"_s.arg(name));
        addFile(u"common/%1/in %1.link"_s.arg(name));
    }
    QCOMPARE(startMenuNames(AppLauncher()),
             QStringList({u"alpha"_s, u"Bravo"_s, u"Charlie"_s, u"delta"_s, u"in alpha"_s,
                          u"in Bravo"_s, u"in Charlie"_s, u"in delta"_s}));
}

void tst_AppLauncherCatalogue::goesThroughRootsThenTheirSubfolders()
{
    addFile(u"common/A/One.link"_s);
    addFile(u"common/Two.link"_s);
    addFile(u"user/Zoo/Three.link"_s);
    addFile(u"user/Four.link"_s);
    QCOMPARE(startMenuNames(AppLauncher()),
             QStringList({u"Four"_s, u"Three"_s, u"Two"_s, u"One"_s}));
}

void tst_AppLauncherCatalogue::survivesCyclicSymbolicLinks()
{
    addFile(u"user/App.link"_s);
    QVERIFY(QFile::link(userMenu(), userMenu() + "/Circle"_L1));
    QVERIFY(QFile::link(userMenu() + "/Self.link"_L1, userMenu() + "/Self.link"_L1));
    QVERIFY(QFile::link(userMenu() + "/Gone"_L1, userMenu() + "/Broken.link"_L1));

    QCOMPARE(startMenuNames(AppLauncher()), QStringList(u"App"_s));
}

void tst_AppLauncherCatalogue::asksForTheNameUnderTheRoot()
{
    const QString first = addFile(u"user/A.link"_s);
    const QString second = addFile(u"common/Tools/B.link"_s);

    const AppLauncher launcher;
    const QList<std::pair<QString, QString>> expected = {{userMenu(), first},
                                                         {commonMenu(), second}};
    QCOMPARE(fakePlatform().startMenuNameCalls, expected);
}

void tst_AppLauncherCatalogue::doesNotScanAgain()
{
    const AppLauncher launcher;
    addFile(u"user/Late.link"_s);

    QVERIFY(startMenuNames(launcher).isEmpty());
    QCOMPARE(startMenuNames(AppLauncher()), QStringList(u"Late"_s));
}

void tst_AppLauncherCatalogue::listsFiveThousandFiles()
{
    QStringList names;
    for (int file = 0; file < 5000; ++file) {
        names.append(u"App %1"_s.arg(file, 4, 10, '0'_L1));
        addFile(u"user/%1.link"_s.arg(names.last()));
    }
    const AppLauncher launcher;
    QCOMPARE(startMenuNames(launcher), names);
    QCOMPARE(column(launcher.search(u"app 4999"_s), u"name"_s), QStringList(names.last()));
}

VASKEL_TEST(tst_AppLauncherCatalogue, QApplication)
#include "tst_AppLauncherCatalogue.moc"
