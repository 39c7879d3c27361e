// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ClosedPipe.h"

#include "platform/World.h"

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

QTEST_GUILESS_MAIN(tst_ClosedPipeContract)
#include "tst_ClosedPipeContract.moc"
