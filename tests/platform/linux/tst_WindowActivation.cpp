// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowActivation.h"

#include "support/TestProgram.h"

#include <QScopeGuard>
#include <QTest>
#include <QWidget>

class tst_WindowActivation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hidesAnInactiveWindowOnWayland();
};

void tst_WindowActivation::hidesAnInactiveWindowOnWayland()
{
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    const auto cleanUp = qScopeGuard([] { qunsetenv("WAYLAND_DISPLAY"); });
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    platform::prepareActivation(&window);
    QVERIFY(window.isVisible());

    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_VERIFY(!window.isActiveWindow());
    platform::prepareActivation(&window);
    QVERIFY(!window.isVisible());
    platform::prepareActivation(&window);
    QVERIFY(!window.isVisible());
}

VASKEL_TEST(tst_WindowActivation, QApplication)
#include "tst_WindowActivation.moc"
