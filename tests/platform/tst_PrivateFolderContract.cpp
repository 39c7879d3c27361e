// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_PrivateFolderContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void makesAFolderWithItsParents();
    void takesAFolderThatIsThere();
    void refusesTheFolderOfSomebodyElse();
    void failsBelowAFile();
};

void tst_PrivateFolderContract::makesAFolderWithItsParents()
{
    const QString path = testhome::path() + "/tmp/parent/child"_L1;
    QVERIFY(platform::makePrivateFolder(path));
    QVERIFY(QFileInfo(path).isDir());
}

void tst_PrivateFolderContract::takesAFolderThatIsThere()
{
    const QString path = testhome::path() + "/tmp/folder"_L1;
    QVERIFY(platform::makePrivateFolder(path));
    testhome::writeFile(u"tmp/folder/kept"_s, {});
    QVERIFY(platform::makePrivateFolder(path));
    QVERIFY(QFileInfo::exists(path + "/kept"_L1));
}

void tst_PrivateFolderContract::refusesTheFolderOfSomebodyElse()
{
    QVERIFY(!platform::makePrivateFolder(world::foreignFolder()));
}

void tst_PrivateFolderContract::failsBelowAFile()
{
    const QString file = testhome::writeFile(u"tmp/file"_s, {});
    QVERIFY(!platform::makePrivateFolder(file + "/folder"_L1));
}

VASKEL_TEST(tst_PrivateFolderContract, QCoreApplication)
#include "tst_PrivateFolderContract.moc"
