// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Folder.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_FolderContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void opensAFolder_data();
    void opensAFolder();
    void failsWithoutAFileManager();
};

void tst_FolderContract::opensAFolder_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("plain") << u"folder"_s;
    QTest::newRow("blank") << u"a folder"_s;
    QTest::newRow("what addresses escape") << u"100% #1"_s;
    QTest::newRow("Chinese") << u"文件夹"_s;
}

void tst_FolderContract::opensAFolder()
{
    QFETCH(const QString, name);
    const QString path = testhome::path() + u'/' + name;
    QVERIFY(QDir().mkpath(path));
    world::installFileManager();
    QVERIFY(platform::openFolder(path));
    QTRY_COMPARE(world::shownFolders(), QStringList(path));
}

void tst_FolderContract::failsWithoutAFileManager()
{
    QCOMPARE(platform::openFolder(testhome::path()), !world::canLackFileManager());
}

VASKEL_TEST(tst_FolderContract, QCoreApplication)
#include "tst_FolderContract.moc"
