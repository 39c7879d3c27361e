// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowActivation.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QWidget>

class tst_WindowActivationContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void leavesTheWindowAsItIs();
};

void tst_WindowActivationContract::init()
{
    world::reset();
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("XDG_SESSION_TYPE");
}

void tst_WindowActivationContract::leavesTheWindowAsItIs()
{
    QWidget window;
    platform::prepareActivation(&window);
    QVERIFY(!window.isVisible());
    window.show();
    platform::prepareActivation(&window);
    QVERIFY(window.isVisible());
    QVERIFY(QTest::qWaitForWindowActive(&window));
    platform::prepareActivation(&window);
    QVERIFY(window.isVisible());
}

VASKEL_TEST(tst_WindowActivationContract, QApplication)
#include "tst_WindowActivationContract.moc"
