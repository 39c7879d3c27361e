// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderEntries.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString folder()
{
    return testhome::path() + "/folder"_L1;
}

/// The sorted names, with a slash behind those of folders.
QStringList listed(const QString &path)
{
    QStringList names;
    for (const platform::FolderEntry &entry : platform::folderEntries(path)) {
        names.append(entry.isFolder ? entry.name + u'/' : entry.name);
    }
    names.sort();
    return names;
}

} // namespace

class tst_FolderEntriesContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void tellsFilesFromFolders();
    void namesHaveAllCharacters();
    void leavesOutWhatQDirHides();
    void isEmptyForAFolderThatCannotBeRead();
};

void tst_FolderEntriesContract::tellsFilesFromFolders()
{
    testhome::writeFile(u"folder/b.txt"_s, "b");
    testhome::writeFile(u"folder/A"_s, {});
    testhome::writeFile(u"folder/Sub/c.txt"_s, "c");
    QCOMPARE(listed(folder()), QStringList({u"A"_s, u"Sub/"_s, u"b.txt"_s}));
}

void tst_FolderEntriesContract::namesHaveAllCharacters()
{
    const QStringList names = {u"a b.txt"_s, u"Éclair.txt"_s, u"音乐.txt"_s, u"\U0001F3B5.txt"_s};
    for (const QString &name : names) {
        testhome::writeFile(u"folder/"_s + name, {});
    }
    QStringList expected = names;
    expected.sort();
    QCOMPARE(listed(folder()), expected);
}

void tst_FolderEntriesContract::leavesOutWhatQDirHides()
{
    testhome::writeFile(u"folder/seen"_s, {});
    testhome::writeFile(u"folder/.hidden"_s, {});
    const QStringList expected =
        QDir(folder()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
    QVERIFY(expected.contains(u"seen"_s));
    QCOMPARE(listed(folder()), expected);
}

void tst_FolderEntriesContract::isEmptyForAFolderThatCannotBeRead()
{
    QCOMPARE(listed(folder()), QStringList());
    testhome::writeFile(u"folder"_s, {});
    QCOMPARE(listed(folder()), QStringList());
}

VASKEL_TEST(tst_FolderEntriesContract, QCoreApplication)
#include "tst_FolderEntriesContract.moc"
