// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFolder.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

using namespace Qt::StringLiterals;

namespace {

// In the security descriptor definition language (SDDL).
QString accessList(const QString &path)
{
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    LPWSTR text = nullptr;
    GetNamedSecurityInfoW(qUtf16Printable(QDir::toNativeSeparators(path)), SE_FILE_OBJECT,
                          DACL_SECURITY_INFORMATION, nullptr, nullptr, nullptr, nullptr,
                          &descriptor);
    ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                         DACL_SECURITY_INFORMATION, &text, nullptr);
    QString list = QString::fromWCharArray(text);
    LocalFree(text);
    LocalFree(descriptor);
    return list;
}

void openToEverybody(const QString &path)
{
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    QVERIFY(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        L"D:P(A;OICI;FA;;;WD)", SDDL_REVISION_1, &descriptor, nullptr));
    QVERIFY(SetFileSecurityW(qUtf16Printable(QDir::toNativeSeparators(path)),
                             DACL_SECURITY_INFORMATION, descriptor));
    LocalFree(descriptor);
}

} // namespace

class tst_PrivateFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void restrictsAFolderThatIsOpenToEverybody();
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
