// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ContainingFolder.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ContainingFolderContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void showsTheFolderOfAFile_data();
    void showsTheFolderOfAFile();
    void showsTheFolderOfAFolder();
    void refusesAFileThatIsMissing_data();
    void refusesAFileThatIsMissing();
    void failsWithoutAFileManager();
};

void tst_ContainingFolderContract::showsTheFolderOfAFile_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");

    QTest::newRow("plain") << u"folder"_s << u"file.txt"_s;
    QTest::newRow("blanks") << u"a folder"_s << u"a file"_s;
    QTest::newRow("what addresses escape") << u"100% #1"_s << u"5% #2"_s;
    QTest::newRow("Chinese") << u"文件夹"_s << u"文件"_s;
}

void tst_ContainingFolderContract::showsTheFolderOfAFile()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, name);
    const QString path = testhome::writeFile(folder + u'/' + name, "text");
    world::installFileManager();
    QVERIFY(platform::showInFolder(path));
    QTRY_COMPARE(world::shownFolders(), QStringList(testhome::path() + u'/' + folder));
}

void tst_ContainingFolderContract::showsTheFolderOfAFolder()
{
    const QString path = testhome::path() + "/folder/inner"_L1;
    QVERIFY(QDir().mkpath(path));
    world::installFileManager();
    QVERIFY(platform::showInFolder(path));
    QTRY_COMPARE(world::shownFolders(), QStringList(testhome::path() + "/folder"_L1));
}

void tst_ContainingFolderContract::refusesAFileThatIsMissing_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("missing") << testhome::path() + u"/missing"_s;
    QTest::newRow("command") << u"notepad"_s;
    QTest::newRow("empty") << QString();
}

void tst_ContainingFolderContract::refusesAFileThatIsMissing()
{
    QFETCH(const QString, path);
    world::installFileManager();
    QVERIFY(!platform::showInFolder(path));
    QCOMPARE(world::shownFolders(), QStringList());
}

void tst_ContainingFolderContract::failsWithoutAFileManager()
{
    const QString path = testhome::writeFile(u"folder/file"_s, "text");
    QCOMPARE(platform::showInFolder(path), !world::canLackFileManager());
}

VASKEL_TEST(tst_ContainingFolderContract, QCoreApplication)
#include "tst_ContainingFolderContract.moc"
