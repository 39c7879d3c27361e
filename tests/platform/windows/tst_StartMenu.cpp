// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include "platform/windows/Recording.h"
#include "platform/windows/ShellLink.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include "launcher/AppLauncher.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int builtinCount = 8;

/// The start-menu entries of the catalogue: names, paths and descriptions, in order.
QList<QStringList> listed()
{
    const AppLauncher launcher;
    QList<QStringList> entries;
    const QVariantList records = launcher.search(QString()).mid(builtinCount);
    for (const QVariant &record : records) {
        const QVariantMap map = record.toMap();
        entries.append({map.value(u"name"_s).toString(), map.value(u"path"_s).toString(),
                        map.value(u"desc"_s).toString()});
    }
    return entries;
}

QString makeLink(int root, const QString &relativePath)
{
    QString path = platform::startMenuRoots().at(root) + u'/' + relativePath;
    const ShellLink link{recording::program(), {}, {}, {}};
    if (!link.write(path)) {
        qFatal("cannot write %s", qUtf8Printable(path));
    }
    return path;
}

} // namespace

class tst_StartMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void usersOwnFolderComesBeforeThatOfAllUsers();
    void emptyFoldersGiveTheBuiltinsAlone();
    void listsLinksOfBothFolders();
    void usersLinkHidesTheOneOfTheSameName();
    void linkInTheRootHidesTheOneInASubfolder();
    void cutsTheLastSuffixAlone();
    void namesThatDifferInCaseBothStay();
    void readsOneLevelOfSubfolders();
    void listsChineseNames();
    void leavesOtherFilesOut();
};

void tst_StartMenu::init()
{
    testhome::reset();
    recording::makeEmptyStartMenu();
}

void tst_StartMenu::usersOwnFolderComesBeforeThatOfAllUsers()
{
    const QStringList roots = platform::startMenuRoots();
    QCOMPARE(roots.size(), 2);
    QVERIFY2(roots.at(0).startsWith(testhome::path()), qPrintable(roots.at(0)));
    QVERIFY2(roots.at(1).contains("ProgramData"_L1), qPrintable(roots.at(1)));
}

void tst_StartMenu::emptyFoldersGiveTheBuiltinsAlone()
{
    QCOMPARE(listed(), QList<QStringList>());
    QCOMPARE(AppLauncher().search(QString()).size(), builtinCount);
}

void tst_StartMenu::listsLinksOfBothFolders()
{
    const QString common = makeLink(1, u"Common Program.lnk"_s);
    const QString own = makeLink(0, u"Own Program.lnk"_s);
    QCOMPARE(listed(), (QList<QStringList>{{u"Own Program"_s, own, u"Start Menu"_s},
                                           {u"Common Program"_s, common, u"Start Menu"_s}}));
}

void tst_StartMenu::usersLinkHidesTheOneOfTheSameName()
{
    makeLink(1, u"Program.lnk"_s);
    const QString own = makeLink(0, u"Program.lnk"_s);
    QCOMPARE(listed(), (QList<QStringList>{{u"Program"_s, own, u"Start Menu"_s}}));
}

void tst_StartMenu::linkInTheRootHidesTheOneInASubfolder()
{
    makeLink(0, u"Accessories/Program.lnk"_s);
    const QString inRoot = makeLink(0, u"Program.lnk"_s);
    QCOMPARE(listed(), (QList<QStringList>{{u"Program"_s, inRoot, u"Start Menu"_s}}));
}

void tst_StartMenu::cutsTheLastSuffixAlone()
{
    const QString path = makeLink(0, u"Foo.Bar.lnk"_s);
    QCOMPARE(listed(), (QList<QStringList>{{u"Foo.Bar"_s, path, u"Start Menu"_s}}));
}

void tst_StartMenu::namesThatDifferInCaseBothStay()
{
    const QString own = makeLink(0, u"Program.lnk"_s);
    const QString common = makeLink(1, u"PROGRAM.lnk"_s);
    QCOMPARE(listed(), (QList<QStringList>{{u"Program"_s, own, u"Start Menu"_s},
                                           {u"PROGRAM"_s, common, u"Start Menu"_s}}));
}

void tst_StartMenu::readsOneLevelOfSubfolders()
{
    makeLink(0, u"Vendor/Suite/Deep.lnk"_s);
    const QString own = makeLink(0, u"Vendor/Program.lnk"_s);
    const QString common = makeLink(1, u"Vaskel Test/Other.lnk"_s);
    QCOMPARE(listed(), (QList<QStringList>{{u"Program"_s, own, u"Start Menu / Vendor"_s},
                                           {u"Other"_s, common, u"Start Menu / Vaskel Test"_s}}));
}

void tst_StartMenu::listsChineseNames()
{
    const QString path = makeLink(0, u"办公/计算器.lnk"_s);
    QCOMPARE(listed(), (QList<QStringList>{{u"计算器"_s, path, u"Start Menu / 办公"_s}}));
    const AppLauncher launcher;
    QCOMPARE(launcher.search(u"jsq"_s).size(), 1);
    QCOMPARE(launcher.search(u"jisuanqi"_s).first().toMap().value(u"path"_s).toString(), path);
}

void tst_StartMenu::leavesOtherFilesOut()
{
    const QString path = makeLink(0, u"Program.LNK"_s);
    QVERIFY(QFile::copy(path, platform::startMenuRoots().at(0) + "/Page.url"_L1));
    QCOMPARE(listed(), (QList<QStringList>{{u"Program"_s, path, u"Start Menu"_s}}));
}

VASKEL_TEST(tst_StartMenu, QApplication)
#include "tst_StartMenu.moc"
