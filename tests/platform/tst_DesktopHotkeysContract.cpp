// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DesktopHotkeys.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

class tst_DesktopHotkeysContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void areNotThereWhereProgramsGrabKeys();
    void holdNothingAtFirst();
};

void tst_DesktopHotkeysContract::areNotThereWhereProgramsGrabKeys()
{
    world::setDesktopHoldsHotkeys(false);
    QVERIFY(!platform::createDesktopHotkeys(nullptr));
}

void tst_DesktopHotkeysContract::holdNothingAtFirst()
{
    const bool canHold = world::setDesktopHoldsHotkeys(true);
    const auto hotkeys = platform::createDesktopHotkeys(nullptr);
    QCOMPARE(hotkeys != nullptr, canHold);
    if (!canHold) {
        return;
    }
    QVERIFY(!hotkeys->isBound());
    QVERIFY(!hotkeys->canConfigure());
    QVERIFY(!hotkeys->trigger({}));
    hotkeys->configure();
    hotkeys->bind({});
    QVERIFY(!hotkeys->isBound());
}

VASKEL_TEST(tst_DesktopHotkeysContract, QGuiApplication)
#include "tst_DesktopHotkeysContract.moc"
