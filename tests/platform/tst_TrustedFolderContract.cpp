// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/TrustedFolder.h"

#include "platform/World.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QTest>

class tst_TrustedFolderContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void trustsTheUsersFolder();
    void trustsNoFolderThatAnotherUserCanChange();
};

void tst_TrustedFolderContract::trustsTheUsersFolder()
{
    QVERIFY(platform::isTrustedFolder(testhome::path()));
    QVERIFY(platform::isTrustedFolder(testhome::appDataPath()));
}

void tst_TrustedFolderContract::trustsNoFolderThatAnotherUserCanChange()
{
    QVERIFY(!platform::isTrustedFolder(world::changeableFolder()));
}

VASKEL_TEST(tst_TrustedFolderContract, QCoreApplication)
#include "tst_TrustedFolderContract.moc"
