// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ClosedPipe.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

class tst_ClosedPipeContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void failsToWrite();
};

void tst_ClosedPipeContract::failsToWrite()
{
    platform::ignoreClosedPipes();
    QVERIFY(world::failsToWriteIntoAClosedPipe());
}

VASKEL_TEST(tst_ClosedPipeContract, QCoreApplication)
#include "tst_ClosedPipeContract.moc"
