// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AutoStart.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

class tst_AutoStartContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void registersUntilSwitchedOff();
    void removesWhatAnotherToolRegistered();
};

void tst_AutoStartContract::registersUntilSwitchedOff()
{
    QVERIFY(!world::startsAtLogIn());
    platform::applyAutoStart(true);
    QVERIFY(world::startsAtLogIn());
    platform::applyAutoStart(true);
    QVERIFY(world::startsAtLogIn());
    platform::applyAutoStart(false);
    QVERIFY(!world::startsAtLogIn());
    platform::applyAutoStart(false);
    QVERIFY(!world::startsAtLogIn());
}

void tst_AutoStartContract::removesWhatAnotherToolRegistered()
{
    world::registerAtLogIn();
    QVERIFY(world::startsAtLogIn());
    platform::applyAutoStart(false);
    QVERIFY(!world::startsAtLogIn());
}

VASKEL_TEST(tst_AutoStartContract, QCoreApplication)
#include "tst_AutoStartContract.moc"
