// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FloatingWindow.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QWindow>

class tst_FloatingWindowContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void showsTheWindowAtItsPlace_data();
    void showsTheWindowAtItsPlace();
};

void tst_FloatingWindowContract::showsTheWindowAtItsPlace_data()
{
    QTest::addColumn<platform::Floating>("floating");
    QTest::newRow("as a dialog") << platform::Floating::AsDialog;
    QTest::newRow("unmanaged") << platform::Floating::Unmanaged;
}

void tst_FloatingWindowContract::showsTheWindowAtItsPlace()
{
    QFETCH(const platform::Floating, floating);
    const QRect place(100, 120, 200, 150);
    QVERIFY(platform::canPlaceWindows());
    QWindow window;
    window.setFlags(Qt::Tool | Qt::FramelessWindowHint);
    window.setGeometry(place);
    window.create();
    const Qt::WindowFlags flags = window.flags();
    for (int show = 0; show < 2; ++show) {
        platform::keepFloating(&window, floating);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_COMPARE(window.geometry(), place);
        // No system of this test needs other flags: openbox and Windows let windows float.
        QCOMPARE(window.flags(), flags);
        window.hide();
    }
}

VASKEL_TEST(tst_FloatingWindowContract, QGuiApplication)
#include "tst_FloatingWindowContract.moc"
