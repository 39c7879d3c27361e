// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/File.h"

#include "platform/World.h"
#include "plugins/OpenedFiles.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_FileContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void opensAFile_data();
    void opensAFile();
};

void tst_FileContract::opensAFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << u"file.txt"_s;
    QTest::newRow("blanks") << u"a file .txt"_s;
    QTest::newRow("what addresses escape") << u"100% #1&a=b+c;d.txt"_s;
    QTest::newRow("Chinese and beyond") << u"文件\U0001f600.txt"_s;
    QTest::newRow("leading dash") << u"-rf.txt"_s;
}

void tst_FileContract::opensAFile()
{
    QFETCH(const QString, name);
    const QString path = testhome::writeFile(name, {});
    const OpenedFiles opened;
    QVERIFY(platform::openFile(path));
    QCOMPARE(opened.paths, QStringList(path));
}

VASKEL_TEST(tst_FileContract, QApplication)
#include "tst_FileContract.moc"
