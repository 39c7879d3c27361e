// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FirstStart.h"

#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_FirstStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheHotkey();
    void tellsThatTheHotkeyIsHeld();
    void saysNothingWithoutAHotkey();
};

void tst_FirstStart::namesTheHotkey()
{
    const QString message = firstStartMessage(u"Ctrl+Alt+Space"_s, HotkeyState::Registered);
    QVERIFY2(message.startsWith("Press Ctrl+Alt+Space to show"_L1), qPrintable(message));
    QVERIFY(!message.contains("held"_L1));
}

void tst_FirstStart::tellsThatTheHotkeyIsHeld()
{
    const QString message = firstStartMessage(u"Meta+F1"_s, HotkeyState::Held);
    QVERIFY2(message.startsWith("The hotkey Meta+F1 is held by another program."_L1),
             qPrintable(message));
    QVERIFY(message.contains("settings page"_L1));
}

void tst_FirstStart::saysNothingWithoutAHotkey()
{
    QCOMPARE(firstStartMessage(QString(), HotkeyState::None), QString());
}

VASKEL_TEST(tst_FirstStart, QCoreApplication)
#include "tst_FirstStart.moc"
