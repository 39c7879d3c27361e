// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileReplacement.h"

#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/FileSizeLimit.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;
using filecontent::contentOf;
using platform::replaceFile;

namespace {

QString folderPath()
{
    return testhome::path() + "/folder"_L1;
}

QString filePath()
{
    return folderPath() + "/file"_L1;
}

QStringList filesInFolder()
{
    return QDir(folderPath()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

class tst_FileReplacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }

    void writesAllBytesAsTheyAre();
    void createsTheFolder();
    void replacesALongerFile();
    void keepsThePermissions();
    void replacesTheTargetOfASymbolicLink();
    void failsWhereThereIsAFolder();
    void failsBelowAFile();
    void keepsTheOldFileOnAFullDisk_data();
    void keepsTheOldFileOnAFullDisk();
};

void tst_FileReplacement::writesAllBytesAsTheyAre()
{
    const QByteArray content("\0 \n \r\n \xff", 8);
    QVERIFY(replaceFile(filePath(), content));
    QCOMPARE(contentOf(filePath()), content);
    QCOMPARE(filesInFolder(), QStringList(u"file"_s));
}

void tst_FileReplacement::createsTheFolder()
{
    QVERIFY(replaceFile(folderPath() + "/one/two/file"_L1, "content"));
    QCOMPARE(contentOf(folderPath() + "/one/two/file"_L1), "content");
}

void tst_FileReplacement::replacesALongerFile()
{
    testhome::writeFile(u"folder/file"_s, "the content before");
    QVERIFY(replaceFile(filePath(), "new"));
    QCOMPARE(contentOf(filePath()), "new");
    QVERIFY(replaceFile(filePath(), {}));
    QCOMPARE(contentOf(filePath()), QByteArray());
}

void tst_FileReplacement::keepsThePermissions()
{
    testhome::writeFile(u"folder/file"_s, "old");
    QVERIFY(QFile::setPermissions(filePath(), QFile::ReadOwner | QFile::WriteOwner));
    const QFile::Permissions before = QFile::permissions(filePath());
    QVERIFY(replaceFile(filePath(), "new"));
    QCOMPARE(QFile::permissions(filePath()), before);
}

void tst_FileReplacement::replacesTheTargetOfASymbolicLink()
{
    const QString target = testhome::writeFile(u"elsewhere/target"_s, "old");
    QVERIFY(QDir().mkpath(folderPath()));
    QVERIFY(QFile::link(target, filePath()));
    QVERIFY(replaceFile(filePath(), "new"));
    QVERIFY(QFileInfo(filePath()).isSymLink());
    QCOMPARE(contentOf(target), "new");
}

void tst_FileReplacement::failsWhereThereIsAFolder()
{
    QVERIFY(QDir().mkpath(filePath()));
    QVERIFY(!replaceFile(filePath(), "content"));
    QVERIFY(QFileInfo(filePath()).isDir());
}

void tst_FileReplacement::failsBelowAFile()
{
    testhome::writeFile(u"folder/file"_s, "old");
    QVERIFY(!replaceFile(filePath() + "/below"_L1, "content"));
    QCOMPARE(contentOf(filePath()), "old");
}

void tst_FileReplacement::keepsTheOldFileOnAFullDisk_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("percent");      // of the file that fits on the disk
    for (const int size : {100, 100000}) { // less and more than Qt buffers
        for (const int percent : {0, 50, 99}) {
            QTest::addRow("%d bytes, room for %d %%", size, percent) << size << percent;
        }
    }
}

void tst_FileReplacement::keepsTheOldFileOnAFullDisk()
{
    QFETCH(const int, size);
    QFETCH(const int, percent);
    testhome::writeFile(u"folder/file"_s, "old");
    const QByteArray content(size, 'n');
    {
        const FileSizeLimit disk(size * percent / 100);
        QVERIFY(!replaceFile(filePath(), content));
    }
    QCOMPARE(contentOf(filePath()), "old");
    QCOMPARE(filesInFolder(), QStringList(u"file"_s));

    QVERIFY(replaceFile(filePath(), content));
    QCOMPARE(contentOf(filePath()), content);
}

VASKEL_TEST(tst_FileReplacement, QCoreApplication)
#include "tst_FileReplacement.moc"
