// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "platform/windows/Owner.h"

#include "platform/windows/AccessList.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString ownSid()
{
    LPWSTR name = nullptr;
    ConvertSidToStringSidW(platform::User().sid(), &name);
    QString sid = QString::fromWCharArray(name);
    LocalFree(name);
    return sid;
}

} // namespace

class tst_PrivateFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void restrictsAFolderThatIsOpenToEverybody();
    void restrictsTheFilesInIt();
    void newFolderIsOpenToTheUserAlone();
    void contentCanBeWritten();
    void knowsWhoCanReplaceAFile_data();
    void knowsWhoCanReplaceAFile();
    void looksAtTheParents();
    void takesAFolderOfItsOwnForTemporaryFiles();
    void hasNoFolderForTemporaryFilesIfNoneIsProtected();
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

void tst_PrivateFolder::knowsWhoCanReplaceAFile_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("letsOthers");

    const QString own = u"O:%1D:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;FA;;;%1)"_s.arg(ownSid());
    const QString installer = u"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464"_s;
    QTest::newRow("user, system, administrators") << own << false;
    QTest::newRow("no list") << u"O:%1"_s.arg(ownSid()) << true;
    QTest::newRow("nobody may") << u"O:%1D:P"_s.arg(ownSid()) << false;
    QTest::newRow("others may read") << own + "(A;OICI;FRFX;;;WD)"_L1 << false;
    QTest::newRow("others may add files") << own + "(A;CI;DCLC;;;BU)"_L1 << false;
    QTest::newRow("others may delete in it") << own + "(A;;0x40;;;BU)"_L1 << true;
    QTest::newRow("others may delete it") << own + "(A;;FRSD;;;BU)"_L1 << true;
    QTest::newRow("others may change the list") << own + "(A;;FRWD;;;BU)"_L1 << true;
    QTest::newRow("others may take it over") << own + "(A;;FRWO;;;BU)"_L1 << true;
    QTest::newRow("others may do everything") << own + "(A;OICI;GA;;;WD)"_L1 << true;
    QTest::newRow("others may modify") << own + "(A;OICI;0x1301bf;;;AU)"_L1 << true;
    QTest::newRow("others are denied it") << own + "(D;OICI;FA;;;WD)"_L1 << false;
    QTest::newRow("only what is made in it") << own + "(A;OICIIO;FA;;;AU)"_L1 << false;
    QTest::newRow("the owner's rights") << own + "(A;OICI;FA;;;S-1-3-4)"_L1 << false;
    QTest::newRow("a packaged program") << own + "(A;OICI;FA;;;S-1-15-2-1)"_L1 << false;
    QTest::newRow("the installer of Windows")
        << own + u"(A;OICI;FA;;;%1)"_s.arg(installer) << false;
    QTest::newRow("another service") << own + "(A;OICI;FA;;;S-1-5-80-1-2-3-4-5)"_L1 << true;
    QTest::newRow("owned by the administrators") << u"O:BAD:P(A;;FA;;;SY)"_s << false;
    QTest::newRow("owned by the installer of Windows")
        << u"O:%1D:P(A;;FA;;;SY)"_s.arg(installer) << false;
    QTest::newRow("owned by somebody else") << u"O:S-1-5-21-1-2-3-1001D:P(A;;FA;;;SY)"_s << true;
}

void tst_PrivateFolder::knowsWhoCanReplaceAFile()
{
    QFETCH(QString, text);
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    QVERIFY(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        qUtf16Printable(text), SDDL_REVISION_1, &descriptor, nullptr));
    const platform::LocalPointer<void> memory(descriptor);
    QTEST(platform::letsOthersReplace(descriptor, platform::User()), "letsOthers");
}

void tst_PrivateFolder::looksAtTheParents()
{
    const QString parent = testhome::path() + "/tmp/parent"_L1;
    QVERIFY(QDir().mkpath(parent + "/child/grandchild"_L1));
    QVERIFY(platform::isProtectedFolder(parent + "/child/grandchild"_L1));
    openToEverybody(parent);
    QVERIFY(!platform::isProtectedFolder(parent + "/child/grandchild"_L1));
    QVERIFY(!platform::isProtectedFolder(parent + "/none"_L1));
}

void tst_PrivateFolder::takesAFolderOfItsOwnForTemporaryFiles()
{
    const QString usual = QDir::tempPath();
    QCOMPARE(platform::temporaryFolder(), usual);
    openToEverybody(usual);
    const QString own = platform::temporaryFolder();
    QVERIFY(platform::makePrivateFolder(usual));
    QCOMPARE(own, QStandardPaths::writableLocation(QStandardPaths::CacheLocation));
    QVERIFY(platform::isProtectedFolder(own));
    QCOMPARE(platform::temporaryFolder(), usual);
}

void tst_PrivateFolder::hasNoFolderForTemporaryFilesIfNoneIsProtected()
{
    // A file takes the place of the program's own folder.
    const QString name = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(u"Without a folder"_s);
    const QString own = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    const QString parent = QFileInfo(own).path();
    const auto cleanUp = qScopeGuard([&] {
        platform::makePrivateFolder(QDir::tempPath());
        QDir(parent).removeRecursively();
        QCoreApplication::setApplicationName(name);
    });
    QVERIFY(QDir().mkpath(parent));
    QFile file(own);
    QVERIFY(file.open(QIODevice::WriteOnly));
    openToEverybody(QDir::tempPath());
    QCOMPARE(platform::temporaryFolder(), QString());
}

VASKEL_TEST(tst_PrivateFolder, QCoreApplication)
#include "tst_PrivateFolder.moc"
