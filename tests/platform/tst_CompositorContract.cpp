// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Compositor.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

class tst_CompositorContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void noticesThatACompositorComesAndGoes();
};

void tst_CompositorContract::noticesThatACompositorComesAndGoes()
{
    if (!world::setCompositing(false)) {
        QVERIFY(platform::isCompositing());
        return;
    }
    QVERIFY(!platform::isCompositing());
    QVERIFY(world::setCompositing(true));
    QVERIFY(platform::isCompositing());
    QVERIFY(world::setCompositing(false));
    QVERIFY(!platform::isCompositing());
}

VASKEL_TEST(tst_CompositorContract, QGuiApplication)
#include "tst_CompositorContract.moc"
