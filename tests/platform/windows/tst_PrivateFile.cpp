// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PrivateFile.h"

#include "platform/windows/AccessList.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <string>

#include <windows.h>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

namespace {

QString filePath()
{
    return testhome::path() + "/tmp/file"_L1;
}

std::wstring native(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

} // namespace

class tst_PrivateFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }

    void endsLinesAsTheSystemDoes();
    void keepsOtherHardLinksOfAnEarlierFile();
    void refusesAFileThatAnotherProgramHolds();
    void takesAPathWithBackslashes();
    void inheritsNoRightsFromASharedFolder();
};

void tst_PrivateFile::endsLinesAsTheSystemDoes()
{
    QFile file(filePath());
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly | QIODevice::Text));
    file.write("one\ntwo\n");
    file.close();
    QCOMPARE(contentOf(filePath()), "one\r\ntwo\r\n");
}

void tst_PrivateFile::keepsOtherHardLinksOfAnEarlierFile()
{
    const QString own = testhome::writeFile(u"own"_s, "content");
    QVERIFY(CreateHardLinkW(native(filePath()).c_str(), native(own).c_str(), nullptr));
    QFile file(filePath());
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly));
    file.write("new");
    file.close();
    QCOMPARE(contentOf(own), "content");
    QCOMPARE(contentOf(filePath()), "new");
}

void tst_PrivateFile::refusesAFileThatAnotherProgramHolds()
{
    testhome::writeFile(u"tmp/file"_s, "in use");
    const HANDLE user = CreateFileW(native(filePath()).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    QVERIFY(user != INVALID_HANDLE_VALUE);
    QFile file(filePath());
    const bool isOpen = platform::openPrivateFile(file, QIODevice::WriteOnly);
    CloseHandle(user);
    QVERIFY(!isOpen);
    QCOMPARE(contentOf(filePath()), "in use");
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly));
}

void tst_PrivateFile::takesAPathWithBackslashes()
{
    testhome::writeFile(u"tmp/file"_s, "a leftover");
    QFile file(QDir::toNativeSeparators(filePath()));
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly));
    file.close();
    QCOMPARE(contentOf(filePath()), "");
}

void tst_PrivateFile::inheritsNoRightsFromASharedFolder()
{
    openToEverybody(testhome::path() + "/tmp"_L1);
    QFile inheriting(testhome::path() + "/tmp/other"_L1);
    QVERIFY(inheriting.open(QIODevice::WriteOnly));
    QVERIFY2(accessList(inheriting.fileName()).contains(";;;WD)"_L1),
             qPrintable(accessList(inheriting.fileName())));

    QFile file(filePath());
    QVERIFY(platform::openPrivateFile(file, QIODevice::WriteOnly));
    QCOMPARE(file.write("content"), 7);
    file.close();
    const QString list = accessList(filePath());
    QVERIFY2(list.contains("(A;"_L1), qPrintable(list));
    for (const auto &others : {";;;WD)"_L1, ";;;BU)"_L1, ";;;AU)"_L1}) {
        QVERIFY2(!list.contains(others), qPrintable(list));
    }
}

VASKEL_TEST(tst_PrivateFile, QCoreApplication)
#include "tst_PrivateFile.moc"
