// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DesktopHotkeys.h"

#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QTest>

class tst_DesktopHotkeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areThereInAWaylandSession_data();
    void areThereInAWaylandSession();
};

void tst_DesktopHotkeys::areThereInAWaylandSession_data()
{
    QTest::addColumn<QByteArray>("display");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<bool>("areThere");

    QTest::newRow("X11") << QByteArray() << QByteArray("x11") << false;
    QTest::newRow("no session") << QByteArray() << QByteArray() << false;
    QTest::newRow("Wayland") << QByteArray("wayland-0") << QByteArray("wayland") << true;
    QTest::newRow("Wayland from a console") << QByteArray("wayland-1") << QByteArray("tty") << true;
    QTest::newRow("Wayland in X11") << QByteArray("wayland-1") << QByteArray("x11") << true;
    QTest::newRow("a service in Wayland") << QByteArray() << QByteArray("wayland") << true;
}

void tst_DesktopHotkeys::areThereInAWaylandSession()
{
    QFETCH(const QByteArray, display);
    QFETCH(const QByteArray, type);
    qputenv("WAYLAND_DISPLAY", display);
    qputenv("XDG_SESSION_TYPE", type);
    QTEST(platform::createDesktopHotkeys(nullptr) != nullptr, "areThere");
}

VASKEL_TEST(tst_DesktopHotkeys, QCoreApplication)
#include "tst_DesktopHotkeys.moc"
