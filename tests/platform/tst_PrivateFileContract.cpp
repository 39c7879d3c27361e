// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include "platform/World.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

class tst_PrivateFileContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void createsAFile();
    void emptiesTheUsersOwnFile();
    void writesTextAsTheSystemHasIt();
    void refusesTheFileOfSomebodyElse();
    void failsWhereThereIsAFolder();
    void failsBelowAFolderThatIsMissing();
};

void tst_PrivateFileContract::createsAFile()
{
    const QString path = testhome::path() + "/tmp/file"_L1;
    QFile file(path);
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly));
    QCOMPARE(file.fileName(), path);
    QCOMPARE(file.write("content\n"), 8);
    file.close();
    QCOMPARE(contentOf(path), "content\n");
}

void tst_PrivateFileContract::emptiesTheUsersOwnFile()
{
    const QString path = testhome::writeFile(u"tmp/file"_s, "a leftover");
    QFile file(path);
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly));
    file.write("new");
    file.close();
    QCOMPARE(contentOf(path), "new");
}

void tst_PrivateFileContract::writesTextAsTheSystemHasIt()
{
    QFile file(testhome::path() + "/tmp/file"_L1);
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly | QIODevice::Text));
    QVERIFY(file.isTextModeEnabled());
}

void tst_PrivateFileContract::refusesTheFileOfSomebodyElse()
{
    const QString path = world::foreignFile();
    const QByteArray content = contentOf(path).value();
    QFile file(path);
    QVERIFY(!platform::openPrivateFile(file, QIODevice::WriteOnly));
    QVERIFY(!file.isOpen());
    QCOMPARE(contentOf(path), content);
}

void tst_PrivateFileContract::failsWhereThereIsAFolder()
{
    const QString path = testhome::path() + "/tmp/folder"_L1;
    QVERIFY(QDir().mkpath(path));
    QFile file(path);
    QVERIFY(!platform::openPrivateFile(file, QIODevice::WriteOnly));
    QVERIFY(QDir(path).exists());
}

void tst_PrivateFileContract::failsBelowAFolderThatIsMissing()
{
    QFile file(testhome::path() + "/tmp/missing/file"_L1);
    QVERIFY(!platform::openPrivateFile(file, QIODevice::WriteOnly));
}

VASKEL_TEST(tst_PrivateFileContract, QCoreApplication)
#include "tst_PrivateFileContract.moc"
