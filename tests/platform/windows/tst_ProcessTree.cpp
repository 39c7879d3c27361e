// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the contract test of platform/ProcessTree cannot see: the handles of the program.
#include "platform/ProcessTree.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <windows.h>

using namespace Qt::StringLiterals;

class tst_ProcessTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void inheritsNoHandle();
};

void tst_ProcessTree::inheritsNoHandle()
{
    const QString path = testhome::writeFile(u"file"_s, {});
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    // Nobody can delete the file while the handle is open.
    const HANDLE handle =
        CreateFileW(reinterpret_cast<const wchar_t *>(QDir::toNativeSeparators(path).utf16()),
                    GENERIC_READ, FILE_SHARE_READ, &inheritable, OPEN_EXISTING, 0, nullptr);
    QVERIFY(handle != INVALID_HANDLE_VALUE);
    platform::ProcessTree tree;
    QProcess process;
    tree.prepare(process);
    process.start(QStringLiteral(STEPS_PROGRAM), {u"wait"_s, u"never"_s}, QIODevice::ReadOnly);
    const bool isStarted = process.waitForStarted();
    CloseHandle(handle);
    const bool isDeleted = QFile::remove(path);
    tree.end(process);
    process.waitForFinished();
    QVERIFY(isStarted);
    QVERIFY(isDeleted);
}

VASKEL_TEST(tst_ProcessTree, QCoreApplication)
#include "tst_ProcessTree.moc"
