// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "platform/windows/AccessList.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_PrivateFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void restrictsAFolderThatIsOpenToEverybody();
    void restrictsTheFilesInIt();
    void newFolderIsOpenToTheUserAlone();
    void contentCanBeWritten();
};

void tst_PrivateFolder::restrictsAFolderThatIsOpenToEverybody()
{
    const QString path = testhome::path() + "/tmp/open"_L1;
    QVERIFY(QDir().mkpath(path));
    openToEverybody(path);
    QVERIFY2(accessList(path).contains(";;;WD)"_L1), qPrintable(accessList(path)));
    QVERIFY(platform::makePrivateFolder(path));
    QVERIFY2(!accessList(path).contains(";;;WD)"_L1), qPrintable(accessList(path)));
}

void tst_PrivateFolder::restrictsTheFilesInIt()
{
    const QString file = testhome::writeFile(u"tmp/open/file"_s, "content");
    openToEverybody(testhome::path() + "/tmp/open"_L1);
    openToEverybody(file);
    QVERIFY2(accessList(file).contains(";;;WD)"_L1), qPrintable(accessList(file)));
    QVERIFY(platform::makePrivateFolder(testhome::path() + "/tmp/open"_L1));
    QVERIFY2(!accessList(file).contains(";;;WD)"_L1), qPrintable(accessList(file)));
    QFile again(file);
    QVERIFY(again.open(QIODevice::ReadWrite));
    QCOMPARE(again.readAll(), "content");
}

void tst_PrivateFolder::newFolderIsOpenToTheUserAlone()
{
    const QString path = testhome::path() + "/tmp/new"_L1;
    QVERIFY(platform::makePrivateFolder(path));
    const QString list = accessList(path);
    QVERIFY2(list.contains("(A;"_L1), qPrintable(list));
    QVERIFY2(!list.contains(";;;WD)"_L1), qPrintable(list));
    QVERIFY2(!list.contains(";;;BU)"_L1), qPrintable(list));
    QVERIFY2(!list.contains(";;;AU)"_L1), qPrintable(list));
}

void tst_PrivateFolder::contentCanBeWritten()
{
    const QString path = testhome::path() + "/tmp/folder"_L1;
    QVERIFY(platform::makePrivateFolder(path));
    QFile file(path + "/file"_L1);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("text"), 4);
}

VASKEL_TEST(tst_PrivateFolder, QCoreApplication)
#include "tst_PrivateFolder.moc"
